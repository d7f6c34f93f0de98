#include "platform/simulated/printers.h"

#include "platform/utf16.h"

#include <cstring>

namespace platform::simulated {
namespace {

NativeHandle handleOf(std::intptr_t id) noexcept {
    constexpr std::intptr_t kStep = 4;  // handles of the system are multiples of four
    return reinterpret_cast<NativeHandle>(id * kStep);
}

}  // namespace

Printers::Printer& Printers::made(std::wstring_view printer) {
    Printer& found = _printers[std::wstring(printer)];
    if (found.id == 0) found.id = ++_lastId;
    return found;
}

void Printers::add(std::wstring_view printer) {
    const SpinScope scope(_lock);
    static_cast<void>(made(printer));
}

void Printers::set(std::wstring_view printer, std::wstring_view value, std::string_view bytes) {
    setOf(printer, kDriverData, value, bytes);
}

void Printers::setDword(std::wstring_view printer, std::wstring_view value, std::uint32_t number) {
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    set(printer, value, std::string_view(bytes, sizeof bytes));
}

void Printers::setOf(std::wstring_view printer, std::wstring_view key, std::wstring_view value,
                     std::string_view bytes) {
    const SpinScope scope(_lock);
    made(printer).keys[std::wstring(key)].insert_or_assign(std::wstring(value), std::string(bytes));
}

void Printers::setTextOf(std::wstring_view printer, std::wstring_view key, std::wstring_view value,
                         std::wstring_view text) {
    const std::u16string units = toUtf16(text);
    setOf(printer, key, value,
          std::string_view(reinterpret_cast<const char*>(units.c_str()),
                           (units.size() + 1) * sizeof(char16_t)));
}

int Printers::openPrinters() const noexcept {
    const SpinScope scope(_lock);
    return _open;
}

bool Printers::isPrepared() const noexcept {
    const SpinScope scope(_lock);
    return _prepared;
}

void Printers::prepare() noexcept {
    const SpinScope scope(_lock);
    _prepared = true;
}

void Printers::reset() {
    Map gone;
    const SpinScope scope(_lock);
    gone.swap(_printers);
    _prepared = false;
}

NativeHandle Printers::open(std::wstring_view printer) noexcept {
    const SpinScope scope(_lock);
    const auto found = _printers.find(printer);
    if (found == _printers.end()) return nullptr;
    ++_open;
    return handleOf(found->second.id);
}

void Printers::close() noexcept {
    const SpinScope scope(_lock);
    --_open;
}

std::uint32_t Printers::read(NativeHandle printer, std::wstring_view key, std::wstring_view value,
                             void* to, std::uint32_t capacity) const noexcept {
    const SpinScope scope(_lock);
    for (const auto& [name, candidate] : _printers) {
        if (handleOf(candidate.id) != printer) continue;
        const auto values = candidate.keys.find(key);
        if (values == candidate.keys.end()) return kFileNotFound;
        const auto found = values->second.find(value);
        if (found == values->second.end()) return kFileNotFound;
        if (found->second.size() > capacity) return kMoreData;
        if (!found->second.empty()) std::memcpy(to, found->second.data(), found->second.size());
        return kSuccess;
    }
    return kInvalidHandleError;
}

}  // namespace platform::simulated
