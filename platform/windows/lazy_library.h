#pragma once

#include <atomic>

// Functions of libraries that most runs never need, or need late: a static import would have the
// system load and start the library before our first line.
namespace platform {

// The function `name` of `library`, which is loaded where it is not yet and stays until the process
// ends. Null when either is missing; the system's last error then says which.
[[nodiscard]] void* findFunction(const wchar_t* library, const char* name) noexcept;

// One function, looked up at its first use. Any thread may ask. Both texts are literals.
template <typename Function>
class LazyFunction {
public:
    constexpr LazyFunction(const wchar_t* library, const char* name) noexcept
        : _library(library), _name(name) {}

    // Null when it is missing; asked again, it is looked for again.
    [[nodiscard]] Function get() noexcept {
        void* address = _address.load(std::memory_order_acquire);
        if (address == nullptr) {
            address = findFunction(_library, _name);
            _address.store(address, std::memory_order_release);
        }
        return reinterpret_cast<Function>(address);
    }

private:
    const wchar_t* _library;
    const char* _name;
    std::atomic<void*> _address{nullptr};
};

}  // namespace platform
