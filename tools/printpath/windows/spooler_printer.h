#pragma once

#include <cstdint>
#include <string>

namespace printpath {

// A printer of the spooler that exists while this object does. Throws Failure when the spooler
// refuses it or has one of this name already: that one stays as it is.
class SpoolerPrinter {
public:
    explicit SpoolerPrinter(const std::wstring& name);
    ~SpoolerPrinter();
    SpoolerPrinter(const SpoolerPrinter&) = delete;
    SpoolerPrinter& operator=(const SpoolerPrinter&) = delete;

    const std::wstring& name() const { return _name; }

private:
    std::wstring _name;
};

// Stores a printer data value of a printer that the spooler knows. Throws Failure when it fails.
void setPrinterValue(const std::wstring& printer, const std::wstring& value, std::uint32_t number);

}  // namespace printpath
