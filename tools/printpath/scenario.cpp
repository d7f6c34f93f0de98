#include "tools/printpath/scenario.h"

#include <cstddef>
#include <stdexcept>

namespace printpath {

void Value::takeTurn(std::int64_t turn) {
    std::int64_t count = 0;
    for (const NumberRange& range : turns)
        count += range.last - range.first + 1;
    if (count == 0) return;
    turn %= count;
    for (const NumberRange& range : turns) {
        const std::int64_t numbers = range.last - range.first + 1;
        if (turn < numbers) {
            number = range.first + turn;
            return;
        }
        turn -= numbers;
    }
}

const Value& Step::operator[](std::string_view parameter) const {
    for (std::size_t i = 0; i < values.size(); ++i)
        if (keyword->parameters[i].name == parameter) return values[i];
    throw std::logic_error(std::string(keyword->name) + " has no parameter " +
                           std::string(parameter));
}

}  // namespace printpath
