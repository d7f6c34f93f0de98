#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Reads values from the front of a fuzzer's bytes. After the end of the bytes, numbers are 0 and
// texts are empty.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : _rest(reinterpret_cast<const char*>(data), size) {}

    [[nodiscard]] bool empty() const { return _rest.empty(); }

    unsigned char byte() {
        if (_rest.empty()) return 0;
        const auto value = static_cast<unsigned char>(_rest.front());
        _rest.remove_prefix(1);
        return value;
    }

    template <typename Number>
    Number number() {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            value |= static_cast<std::uint64_t>(byte()) << (8 * i);
        }
        return static_cast<Number>(value);
    }

    // The next `most` bytes, or all that are left.
    std::string_view text(std::size_t most) {
        const std::string_view taken = _rest.substr(0, std::min(most, _rest.size()));
        _rest.remove_prefix(taken.size());
        return taken;
    }

    // The text up to the next `mark`, which is read too.
    std::string_view upTo(char mark) {
        const std::size_t end = std::min(_rest.find(mark), _rest.size());
        const std::string_view taken = _rest.substr(0, end);
        _rest.remove_prefix(std::min(end + 1, _rest.size()));
        return taken;
    }
    std::string_view line() { return upTo('\n'); }

    [[nodiscard]] std::string_view rest() const { return _rest; }

private:
    std::string_view _rest;
};
