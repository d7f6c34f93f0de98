#pragma once

#include "platform/native_handle.h"
#include "platform/simulated/spin_lock.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform::simulated {

// The maker's device library and the printer behind it. Every port leads to the same printer. The
// library cannot be loaded before install(). Any thread may call.
class Device {
public:
    struct Press {
        std::wstring port;
        std::wstring button;
    };

    static constexpr std::wstring_view kLibraryName = L"rtqewsi.dll";

    // From now on the library can be loaded by its name.
    void install();
    // Leaves one function out of the library.
    void withhold(std::string_view function);
    void setPage(std::string_view path, std::string_view bytes);
    // From now on the library reports this length for every page; nullopt: the page's true length.
    void claimLength(std::optional<std::uint32_t> bytes);
    // From now on the library answers for every page without telling a length.
    void tellNoLength();

    [[nodiscard]] std::vector<Press> presses() const;
    // Ports in the order in which they were opened.
    [[nodiscard]] std::vector<std::wstring> openedPorts() const;
    // Names of functions in the order in which they were looked up.
    [[nodiscard]] std::vector<std::string> lookedUp() const;
    // Devices that were opened and not yet closed: 0 when nothing leaks, negative after a device
    // was closed twice.
    [[nodiscard]] int openDevices() const noexcept;
    [[nodiscard]] int loadedLibraries() const noexcept;
    void reset();

    // For the simulated services.
    [[nodiscard]] NativeHandle load(std::wstring_view library) noexcept;
    void unload() noexcept;
    [[nodiscard]] void* function(std::string_view name) noexcept;
    [[nodiscard]] NativeHandle openPort(std::wstring_view port) noexcept;
    [[nodiscard]] bool close(NativeHandle device) noexcept;
    [[nodiscard]] bool getPage(NativeHandle device, std::string_view path, char* buffer,
                               std::uint32_t bytes, std::uint32_t& received) const noexcept;
    [[nodiscard]] bool press(NativeHandle device, std::wstring_view button) noexcept;

private:
    struct State {
        bool isInstalled = false;
        std::set<std::string, std::less<>> withheld;
        std::map<std::string, std::string, std::less<>> pages;
        std::optional<std::uint32_t> claimedLength;
        bool tellsLength = true;
        std::vector<std::wstring> ports;  // a device's handle is its position here, counted from 1
        std::vector<Press> presses;
        std::vector<std::string> lookedUp;
    };

    [[nodiscard]] bool isDevice(NativeHandle device) const noexcept;

    mutable SpinLock _lock;
    State _state;
    int _openDevices = 0;
    int _loaded = 0;
};

}  // namespace platform::simulated
