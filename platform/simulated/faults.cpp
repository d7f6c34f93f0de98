#include "platform/simulated/faults.h"

namespace platform::simulated {
namespace {

std::size_t indexOf(Call call) noexcept {
    return static_cast<std::size_t>(call);
}

}  // namespace

bool Faults::add(const Fault& fault) noexcept {
    const SpinScope scope(_lock);
    if (_faultCount == kFaultLimit) return false;
    Fault& added = _faults[_faultCount++];
    added = fault;
    added.nth += _calls[indexOf(fault.call)];
    return true;
}

void Faults::reset() noexcept {
    const SpinScope scope(_lock);
    _faultCount = 0;
    _calls.fill(0);
    _struck = 0;
}

void Faults::clear() noexcept {
    const SpinScope scope(_lock);
    _faultCount = 0;
}

long Faults::calls(Call call) const noexcept {
    const SpinScope scope(_lock);
    return _calls[indexOf(call)];
}

long Faults::struck() const noexcept {
    const SpinScope scope(_lock);
    return _struck;
}

bool Faults::strikes(Call call, std::uint32_t& error) noexcept {
    const SpinScope scope(_lock);
    const long n = ++_calls[indexOf(call)];
    for (std::size_t i = 0; i < _faultCount; ++i) {
        const Fault& fault = _faults[i];
        if (fault.call != call || n < fault.nth || (n > fault.nth && !fault.forEver)) continue;
        ++_struck;
        error = fault.error;
        return true;
    }
    return false;
}

}  // namespace platform::simulated
