#include "tests/support/replaced_new.h"

#include <new>

using replaced_new::give;
using replaced_new::take;

void* operator new(std::size_t bytes) {
    if (void* const block = take(bytes)) return block;
    throw std::bad_alloc();
}
void* operator new[](std::size_t bytes) {
    return operator new(bytes);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return take(bytes);
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return take(bytes);
}
void operator delete(void* block) noexcept {
    give(block);
}
void operator delete[](void* block) noexcept {
    give(block);
}
void operator delete(void* block, std::size_t) noexcept {
    give(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    give(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    give(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    give(block);
}
