#include "device/ews_intf.h"

#include "platform/native_handle.h"
#include "platform/trace.h"

#include <cstdio>
#include <memory>
#include <new>

namespace {

constexpr wchar_t kLibraryName[] = L"rtqewsi.dll";
constexpr std::uint32_t kPageBytes = 65536;  // the largest page that is read

// The library's functions follow the system's standard calling convention, of which x64 has one.
using OpenPortFunction = void* (*)(const wchar_t* portName);
using CloseFunction = int (*)(void* device);
using GetPageFunction = int (*)(void* device, const char* pagePath, void* reserved, char* buffer,
                                std::uint32_t bufferBytes, std::uint32_t* receivedBytes);
using PushButtonFunction = int (*)(void* device, const wchar_t* buttonName);

struct EntryPoint {
    const char* name;    // as exported
    const char* member;  // as the trace shows it
};

// In the order in which they are looked up and traced. The library counts as usable only with all
// of them, those that this program never calls included: a library that lacks some is not the one
// whose functions have the types above. Kept: see decision 0012.
// clang-format off
constexpr std::array kEntryPoints{
    EntryPoint{"OpenEWSPort_W", "pfnOpenEWSPort_W"},
    EntryPoint{"OpenEWSPort_A", "pfnOpenEWSPort_A"},
    EntryPoint{"OpenEWS_W",     "pfnOpenEWS_W"},
    EntryPoint{"OpenEWS_A",     "pfnOpenEWS_A"},
    EntryPoint{"CloseEWS",      "pfnCloseEWS"},
    EntryPoint{"EWSLastError",  "pfnEWSLastError"},
    EntryPoint{"WriteEWS",      "pfnWriteEWS"},
    EntryPoint{"ReadEWS",       "pfnReadEWS"},
    EntryPoint{"WriteReadEWS",  "pfnWriteReadEWS"},
};
// clang-format on
constexpr std::size_t kOpenPort = 0;
constexpr std::size_t kClose = 4;

// The low half of an address: the dump has eight digits for each.
unsigned shown(const void* address) {
    return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(address));
}

void traceAddress(const char* member, const void* address) {
    platform::trace("%16s = %08x\n", member, shown(address));
}

void debugLookUp(const char* operation, const char* problem, const char* name, const char* rest) {
    // Equally right with 161: the longest text has 79 bytes.
    constexpr std::size_t kTextBytes = 160;
    char text[kTextBytes];
    std::snprintf(text, sizeof text, "EWSIntf::%s: %s%s%s\n", operation, problem, name, rest);
    platform::debugOutput(text);
}

struct CloseDevice {
    CloseFunction close;
    void operator()(void* device) const { close(device); }
};
using OpenDevice = std::unique_ptr<void, CloseDevice>;

}  // namespace

EWSIntf::EWSIntf() : _library(kLibraryName), _entryPoints{} {
    static_assert(kEntryPoints.size() == kEntryPointCount);
    for (std::size_t i = 0; i < kEntryPointCount; ++i) {
        _entryPoints[i] = _library.function(kEntryPoints[i].name);
    }
}

bool EWSIntf::isLoaded() {
    bool complete = _library.handle() != nullptr;
    for (const void* const entryPoint : _entryPoints) {
        complete = complete && entryPoint != nullptr;
    }
    if (complete) return true;

    traceAddress("hMod", _library.handle());
    for (std::size_t i = 0; i < kEntryPointCount; ++i) {
        traceAddress(kEntryPoints[i].member, _entryPoints[i]);
    }
    _lastError =
        _library.handle() != nullptr ? platform::kProcedureNotFound : platform::kModuleNotFound;
    return false;
}

void* EWSIntf::openPort(const wchar_t* portName) {
    if (!isLoaded()) return nullptr;
    return reinterpret_cast<OpenPortFunction>(_entryPoints[kOpenPort])(portName);
}

void* EWSIntf::lookUp(void*& cached, const char* operation, const char* name) {
    if (cached != nullptr) return cached;
    if (_library.handle() == nullptr) {
        debugLookUp(operation, "Attempting to lookup ", name, " with no DLL handle");
        _lastError = platform::kInvalidHandleError;
        return nullptr;
    }
    cached = _library.function(name);
    if (cached == nullptr) {
        debugLookUp(operation, "Function not found in DLL: ", name, "");
        _lastError = platform::kProcedureNotFound;
    }
    return cached;
}

// A try block of the whole function: the device is closed before its handler runs.
bool EWSIntf::get_page(const wchar_t* portName, const char* pagePath, std::string& page) try {
    page.clear();
    const OpenDevice device(openPort(portName),
                            {reinterpret_cast<CloseFunction>(_entryPoints[kClose])});
    const auto getPage = reinterpret_cast<GetPageFunction>(lookUp(_getPage, "get_page", "GetPage"));
    if (device == nullptr || getPage == nullptr) return false;

    page.resize(kPageBytes);
    std::uint32_t received = 0;
    const bool answered =
        getPage(device.get(), pagePath, nullptr, page.data(), kPageBytes, &received) != 0;
    // A length beyond the buffer speaks of bytes that did not arrive. Why no bytes are no page: see
    // decision 0021.
    const bool usable = answered && received > 0 && received <= kPageBytes;
    page.resize(usable ? received : 0);
    return usable;
} catch (const std::bad_alloc&) {  // the page stayed empty
    return false;
}

bool EWSIntf::push_button(const wchar_t* portName, const wchar_t* buttonName) {
    const OpenDevice device(openPort(portName),
                            {reinterpret_cast<CloseFunction>(_entryPoints[kClose])});
    const auto pushButton =
        reinterpret_cast<PushButtonFunction>(lookUp(_pushButton, "push_button", "PushLedmButtonW"));
    if (device == nullptr || pushButton == nullptr) return false;

    return pushButton(device.get(), buttonName) != 0;
}
