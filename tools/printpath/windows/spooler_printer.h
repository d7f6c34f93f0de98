#pragma once

#include <cstdint>
#include <string>

namespace printpath {

// A printer of the spooler that exists as long as this object. The constructor throws Failure when
// the spooler refuses the printer or has one of this name already, which is then not changed.
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

// Stores a value in the printer data of an existing printer. Throws Failure when that fails.
void setPrinterValue(const std::wstring& printer, const std::wstring& value, std::uint32_t number);

}  // namespace printpath
