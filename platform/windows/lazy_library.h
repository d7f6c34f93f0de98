#pragma once

#include <atomic>

// Functions of the system's libraries that most runs never need, or need late. They are looked up
// at run time because with a static import the system would load the library before main() begins.
namespace platform {

// The function `name` of `library`, which is loaded from the system's folder if it is not loaded
// yet and stays until the process ends. Null when either is missing; the system's last error then
// says which. Any thread may call.
[[nodiscard]] void* findFunction(const wchar_t* library, const char* name) noexcept;

// One function, looked up at its first use. Any thread may ask. Both texts are kept as pointers, so
// they must be literals.
template <typename Function>
class LazyFunction {
public:
    constexpr LazyFunction(const wchar_t* library, const char* name) noexcept
        : _library(library), _name(name) {}

    // Null when it is missing; the next call then looks for it again.
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
