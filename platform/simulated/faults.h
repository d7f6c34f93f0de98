#pragma once

#include "platform/native_handle.h"
#include "platform/simulated/spin_lock.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform::simulated {

// Every call of the seam that can fail, and every function of the device library.
enum class Call {
    MutexCreation,
    ThreadStart,
    ThreadExitCode,
    ThreadWait,
    LibraryLoad,
    FunctionLookup,
    FileCopy,
    FileRead,
    FileWrite,
    PipeWait,
    PipeOpenForReading,
    PipeOpenForWriting,
    PipeMode,
    PipeRead,
    PipeWrite,
    RegistryOpen,
    RegistryCreate,
    RegistryRead,
    RegistryWrite,
    RegistryRemove,
    TextLookup,
    TextProbe,
    InterfaceLanguage,
    PreferredLanguages,
    SystemVersion,
    ResourceLibraryOpen,
    AddressOpen,
    ProgramStart,
    DocumentOpen,
    FolderLookup,
    PrinterOpen,
    PrinterDataRead,
    XmlQuery,
    DeviceOpen,
    DevicePage,
    DeviceButton,
    Count
};
inline constexpr std::size_t kCalls = static_cast<std::size_t>(Call::Count);
inline constexpr std::uint32_t kGeneralFailure = 31;  // the system's "a device does not function"

// Makes the nth call of its kind fail, or with `forEver` that call and all later ones. The first
// call after the fault was added has number 1.
struct Fault {
    Call call;
    long nth = 1;
    bool forEver = false;
    std::uint32_t error = kGeneralFailure;
};

// Counts the calls and makes them fail. Any thread may call. Nothing here allocates, so that tests
// can make allocations fail at the same time.
class Faults {
public:
    static constexpr std::size_t kFaultLimit = 16;

    // False, without an effect, when there are kFaultLimit faults already.
    bool add(const Fault& fault) noexcept;
    // Removes the faults and sets all counts to 0.
    void reset() noexcept;
    // Removes the faults and keeps the counts.
    void clear() noexcept;

    [[nodiscard]] long calls(Call call) const noexcept;
    [[nodiscard]] long struck() const noexcept;

    // For the simulated services: counts one call and says whether it must fail. `error` then gets
    // the error number of the fault and is otherwise left alone.
    [[nodiscard]] bool strikes(Call call, std::uint32_t& error) noexcept;
    [[nodiscard]] bool strikes(Call call) noexcept {
        std::uint32_t ignored = 0;
        return strikes(call, ignored);
    }

private:
    mutable SpinLock _lock;
    std::array<Fault, kFaultLimit> _faults{};
    std::size_t _faultCount = 0;
    std::array<long, kCalls> _calls{};
    long _struck = 0;
};

}  // namespace platform::simulated
