#pragma once

#include "bench/plain_bag.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plain {

// A hand-written parse of the status channel into plain messages. `Read(to, bytes)` fills the whole
// block and answers false at the end of the input; `Take(MessagePointer)` gets every message.
template <typename Read, typename Take>
class Decoder {
public:
    Decoder(std::uint32_t printerId, Read read, Take take)
        : _printerId(printerId), _read(std::move(read)), _take(std::move(take)) {}

    void run() {
        unsigned char header[kHeaderBytes];
        while (_read(header, kHeaderBytes)) {
            if (numberAt(header) != kMagic) return;
            const std::uint32_t recordClass = numberAt(header + 4);
            const std::uint32_t subcode = numberAt(header + 8);
            const std::uint32_t printerId = numberAt(header + 12);
            const std::uint32_t bodyBytes = numberAt(header + 16);
            if (bodyBytes > kMostBodyBytes) return;
            _body.resize(bodyBytes);
            if (!_read(_body.data(), bodyBytes)) return;
            _cursor = 0;
            if (printerId != _printerId) continue;

            auto message = std::make_unique<Message>(nullptr, recordClass, 0U);
            set(message->properties, L"subcode", static_cast<std::int32_t>(subcode));
            if (recordClass == 0) addJobFields(subcode, message->properties);
            if (recordClass == 1) addBlock(message->properties);
            if (recordClass == 2) addStatusFields(subcode, message->properties);
            _take(std::move(message));
        }
    }

private:
    static constexpr std::size_t kHeaderBytes = 20;
    static constexpr std::uint32_t kMagic = 0x4F4C4556;
    static constexpr std::uint32_t kMostBodyBytes = 1048576;
    static constexpr std::size_t kQuoteReach = 10;
    static constexpr std::size_t kMediaNameLetters = 80;

    static std::uint32_t numberAt(const unsigned char* at) {
        std::uint32_t value = 0;
        std::memcpy(&value, at, sizeof value);
        return value;
    }

    std::int32_t number() {
        if (_body.size() - _cursor < 4) return 0;
        const std::uint32_t value = numberAt(_body.data() + _cursor);
        _cursor += 4;
        return static_cast<std::int32_t>(value);
    }

    std::string text() {
        const auto* at = reinterpret_cast<const char*>(_body.data()) + _cursor;
        const std::size_t left = _body.size() - _cursor;
        const std::size_t bytes = strnlen(at, left);
        if (bytes == left) return {};
        _cursor += bytes + 1;
        return std::string(at, bytes);
    }

    std::wstring wideText() {
        std::wstring letters;
        for (std::size_t at = _cursor; at + 2 <= _body.size(); at += 2) {
            const auto unit = static_cast<wchar_t>(_body[at] | _body[at + 1] << 8);
            if (unit == 0) {
                _cursor = at + 2;
                return letters;
            }
            letters += unit;
        }
        return {};
    }

    void addJobFields(std::uint32_t subcode, Bag& properties) {
        switch (subcode) {
            case 0:
                set(properties, L"portName", text());
                set(properties, L"printerName", text());
                break;
            case 1:
                set(properties, L"portName", wideText());
                set(properties, L"printerName", wideText());
                break;
            case 2:
                set(properties, L"jobID", number());
                set(properties, L"docName", text());
                break;
            case 3:
                set(properties, L"jobID", number());
                set(properties, L"docName", wideText());
                break;
            case 4:
                set(properties, L"jobID", number());
                break;
            case 5:
                set(properties, L"severity", number());
                set(properties, L"status", number());
                break;
            default:
                break;
        }
    }

    void addBlock(Bag& properties) {
        _block = _body;
        set(properties, L"oemMessages", static_cast<void*>(_block.data()));
        set(properties, L"oembufferSize", static_cast<std::int32_t>(_block.size()));
    }

    void addStatusFields(std::uint32_t subcode, Bag& properties) {
        if (subcode == 3) set(properties, L"status", number());
        if (subcode == 11) set(properties, L"blackSN", serialNumber(text()));
        if (subcode == 18) {
            if (const auto name = mediaName(text())) set(properties, L"mediaType", *name);
        }
    }

    static std::int32_t serialNumber(const std::string& report) {
        const std::size_t key = report.find("SerialNumber");
        const std::size_t equals = key != std::string::npos ? report.find('=', key) : key;
        if (equals == std::string::npos) return 0;
        return static_cast<std::int32_t>(std::strtol(report.c_str() + equals + 1, nullptr, 10));
    }

    static std::optional<std::string> mediaName(const std::string& report) {
        const std::size_t display = report.find("DISPLAY");
        if (display == std::string::npos) return std::nullopt;
        const std::size_t quote = report.find('"', display);
        if (quote == std::string::npos || quote - display > kQuoteReach) return std::nullopt;
        const std::size_t end = report.find('"', quote + 1);
        std::string name = report.substr(quote + 1, end - quote - 1);
        if (name.size() > kMediaNameLetters) name.resize(kMediaNameLetters);
        if (name.empty()) name = "UNKNOWN";
        return name;
    }

    std::uint32_t _printerId;
    Read _read;
    Take _take;
    std::vector<unsigned char> _body;
    std::size_t _cursor = 0;
    std::vector<unsigned char> _block;
};

}  // namespace plain
