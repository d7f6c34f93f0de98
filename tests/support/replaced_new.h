#pragma once

#include <cstddef>

// What `new` and `delete` of a program call when it links replaced_new.cpp: one other source of the
// program defines these two. Any thread may call them.
namespace replaced_new {

// Null when there is no memory: `new` then throws std::bad_alloc.
void* take(std::size_t bytes) noexcept;
void give(void* block) noexcept;

}  // namespace replaced_new
