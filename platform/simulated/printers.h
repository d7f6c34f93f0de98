#pragma once

#include "platform/native_handle.h"
#include "platform/simulated/case_insensitive.h"
#include "platform/simulated/spin_lock.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace platform::simulated {

// The spooler's printers and their data. Any thread may call.
class Printers {
public:
    // The key of the values that Printer::readData() reads, which names no key.
    static constexpr std::wstring_view kDriverData = L"PrinterDriverData";

    void add(std::wstring_view printer);
    // These add the printer if it does not exist.
    void set(std::wstring_view printer, std::wstring_view value, std::string_view bytes);
    void setDword(std::wstring_view printer, std::wstring_view value, std::uint32_t number);
    void setOf(std::wstring_view printer, std::wstring_view key, std::wstring_view value,
               std::string_view bytes);
    // Stores the text as UTF-16 with its NUL, as the spooler does.
    void setTextOf(std::wstring_view printer, std::wstring_view key, std::wstring_view value,
                   std::wstring_view text);
    // Printers that were opened and not closed: 0 when nothing leaks.
    [[nodiscard]] int openPrinters() const noexcept;
    // Whether prepareSpooler() has been called.
    [[nodiscard]] bool isPrepared() const noexcept;
    void reset();

    // For the simulated services.
    void prepare() noexcept;
    [[nodiscard]] NativeHandle open(std::wstring_view printer) noexcept;
    void close() noexcept;
    [[nodiscard]] std::uint32_t read(NativeHandle printer, std::wstring_view key,
                                     std::wstring_view value, void* to,
                                     std::uint32_t capacity) const noexcept;

private:
    using Values = std::map<std::wstring, std::string, CaseInsensitive>;
    struct Printer {
        std::intptr_t id = 0;  // makes the handle; never used twice
        std::map<std::wstring, Values, CaseInsensitive> keys;
    };
    using Map = std::map<std::wstring, Printer, CaseInsensitive>;

    [[nodiscard]] Printer& made(std::wstring_view printer);

    mutable SpinLock _lock;
    Map _printers;
    std::intptr_t _lastId = 0;
    int _open = 0;
    bool _prepared = false;
};

}  // namespace platform::simulated
