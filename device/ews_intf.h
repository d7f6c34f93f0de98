#pragma once

#include "platform/dynamic_library.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

// The maker's device library, bound at construction and let go at destruction. Each operation opens
// the device by its port name and closes it on every path, so objects are short-lived and share
// nothing: any thread may make its own. The names of the operations are kept: see decision 0012.
class EWSIntf {
public:
    EWSIntf();
    ~EWSIntf() = default;
    EWSIntf(const EWSIntf&) = delete;
    EWSIntf& operator=(const EWSIntf&) = delete;

    // True when the library and all of its nine entry points are there. Otherwise traces what was
    // found and sets the last error: 127 with a library, 126 without.
    bool isLoaded();

    // Reads a page of the printer's web service, at most 65,536 bytes. False, with `page` empty, on
    // any failure, memory and an empty page included.
    bool get_page(const wchar_t* portName, const char* pagePath, std::string& page);

    // Presses a button of the printer's control panel ("go", "cancel").
    bool push_button(const wchar_t* portName, const wchar_t* buttonName);

    // The system's number for what was missing last: 126 no library, 127 an entry point, 6 a
    // function asked of no library. 0 while nothing was missing.
    [[nodiscard]] std::uint32_t lastError() const noexcept { return _lastError; }

private:
    static constexpr std::size_t kEntryPointCount = 9;

    // The opened device, which the caller closes; null when the library is incomplete or the device
    // does not answer.
    void* openPort(const wchar_t* portName);
    // A further function of the library, null when it is missing; says so to the debugger.
    void* lookUp(void*& cached, const char* operation, const char* name);

    platform::DynamicLibrary _library;
    std::array<void*, kEntryPointCount> _entryPoints;
    void* _getPage = nullptr;     // looked up at first use
    void* _pushButton = nullptr;  // looked up at first use
    std::uint32_t _lastError = 0;
};
