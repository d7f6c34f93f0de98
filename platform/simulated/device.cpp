#include "platform/simulated/device.h"

#include "platform/simulated/case_insensitive.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/world.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <new>
#include <utility>

// The functions of the device library, with the types that its callers use.
namespace {

using platform::simulated::Call;
using platform::simulated::world;

void* openPortWide(const wchar_t* portName) {
    if (world().faults.strikes(Call::DeviceOpen) || portName == nullptr) return nullptr;
    return world().device.openPort(portName);
}

int closeDevice(void* device) {
    return world().device.close(device) ? 1 : 0;
}

int getPage(void* device, const char* pagePath, void* reserved, char* buffer,
            std::uint32_t bufferBytes, std::uint32_t* receivedBytes) {
    // The maker's library might use a reserved argument that is not null, so a caller that passes
    // one gets a failure here.
    if (world().faults.strikes(Call::DevicePage) || reserved != nullptr) return 0;
    return world().device.getPage(device, pagePath, buffer, bufferBytes, *receivedBytes) ? 1 : 0;
}

int pushButton(void* device, const wchar_t* buttonName) {
    if (world().faults.strikes(Call::DeviceButton)) return 0;
    return world().device.press(device, buttonName) ? 1 : 0;
}

// Stands for the functions that the product looks up but never calls. The library must have them
// all, or the product does not use it.
int notCalled() {
    return 0;
}

struct Export {
    std::string_view name;
    void* address;
};

template <typename Function>
void* addressOf(Function* function) noexcept {
    return reinterpret_cast<void*>(function);
}

// clang-format off
const std::array kExports{
    Export{"OpenEWSPort_W",   addressOf(&openPortWide)},
    Export{"OpenEWSPort_A",   addressOf(&notCalled)},
    Export{"OpenEWS_W",       addressOf(&notCalled)},
    Export{"OpenEWS_A",       addressOf(&notCalled)},
    Export{"CloseEWS",        addressOf(&closeDevice)},
    Export{"EWSLastError",    addressOf(&notCalled)},
    Export{"WriteEWS",        addressOf(&notCalled)},
    Export{"ReadEWS",         addressOf(&notCalled)},
    Export{"WriteReadEWS",    addressOf(&notCalled)},
    Export{"GetPage",         addressOf(&getPage)},
    Export{"PushLedmButtonW", addressOf(&pushButton)},
};
// clang-format on

}  // namespace

namespace platform::simulated {
namespace {

std::size_t numberOf(NativeHandle device) noexcept {
    return reinterpret_cast<std::size_t>(device);
}

}  // namespace

void Device::install() {
    const SpinScope scope(_lock);
    _state.isInstalled = true;
}

void Device::withhold(std::string_view function) {
    const SpinScope scope(_lock);
    _state.withheld.emplace(function);
}

void Device::setPage(std::string_view path, std::string_view bytes) {
    const SpinScope scope(_lock);
    _state.pages.insert_or_assign(std::string(path), std::string(bytes));
}

void Device::claimLength(std::optional<std::uint32_t> bytes) {
    const SpinScope scope(_lock);
    _state.claimedLength = bytes;
}

void Device::tellNoLength() {
    const SpinScope scope(_lock);
    _state.tellsLength = false;
}

std::vector<Device::Press> Device::presses() const {
    const SpinScope scope(_lock);
    return _state.presses;
}

std::vector<std::wstring> Device::openedPorts() const {
    const SpinScope scope(_lock);
    return _state.ports;
}

std::vector<std::string> Device::lookedUp() const {
    const SpinScope scope(_lock);
    return _state.lookedUp;
}

int Device::openDevices() const noexcept {
    const SpinScope scope(_lock);
    return _openDevices;
}

int Device::loadedLibraries() const noexcept {
    const SpinScope scope(_lock);
    return _loaded;
}

void Device::reset() {
    State gone;
    const SpinScope scope(_lock);
    std::swap(gone, _state);
}

NativeHandle Device::load(std::wstring_view library) noexcept {
    const SpinScope scope(_lock);
    if (!_state.isInstalled || !sameName(library, kLibraryName)) return nullptr;
    ++_loaded;
    return this;
}

void Device::unload() noexcept {
    const SpinScope scope(_lock);
    --_loaded;
}

void* Device::function(std::string_view name) noexcept {
    const SpinScope scope(_lock);
    try {
        _state.lookedUp.emplace_back(name);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    if (_state.withheld.contains(name)) return nullptr;
    const auto found = std::find_if(kExports.begin(), kExports.end(),
                                    [&](const Export& entry) { return entry.name == name; });
    return found != kExports.end() ? found->address : nullptr;
}

NativeHandle Device::openPort(std::wstring_view port) noexcept {
    const SpinScope scope(_lock);
    try {
        _state.ports.emplace_back(port);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    ++_openDevices;
    return reinterpret_cast<NativeHandle>(_state.ports.size());
}

bool Device::isDevice(NativeHandle device) const noexcept {
    return numberOf(device) >= 1 && numberOf(device) <= _state.ports.size();
}

bool Device::close(NativeHandle device) noexcept {
    const SpinScope scope(_lock);
    if (!isDevice(device)) return false;
    --_openDevices;
    return true;
}

bool Device::getPage(NativeHandle device, std::string_view path, char* buffer, std::uint32_t bytes,
                     std::uint32_t& received) const noexcept {
    const SpinScope scope(_lock);
    const auto found = _state.pages.find(path);
    if (!isDevice(device) || found == _state.pages.end()) return false;
    const std::string& page = found->second;
    const std::size_t copied = std::min<std::size_t>(page.size(), bytes);
    if (copied != 0) page.copy(buffer, copied);
    if (!_state.tellsLength) return true;
    // Report the whole length even if the page did not fit: a caller that trusts this number would
    // read beyond its buffer, and tests must notice that.
    received = _state.claimedLength.value_or(static_cast<std::uint32_t>(page.size()));
    return true;
}

bool Device::press(NativeHandle device, std::wstring_view button) noexcept {
    const SpinScope scope(_lock);
    if (!isDevice(device)) return false;
    try {
        _state.presses.push_back({_state.ports[numberOf(device) - 1], std::wstring(button)});
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace platform::simulated
