#include "tools/printpath/scenario.h"

#include <cstddef>
#include <stdexcept>

namespace printpath {

const Value& Step::operator[](std::string_view parameter) const {
    for (std::size_t i = 0; i < values.size(); ++i)
        if (keyword->parameters[i].name == parameter) return values[i];
    throw std::logic_error(std::string(keyword->name) + " has no parameter " +
                           std::string(parameter));
}

}  // namespace printpath
