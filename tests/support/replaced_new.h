#pragma once

#include <cstddef>

// In a program that links replaced_new.cpp, `new` and `delete` call these two functions. One other
// source of the program defines them. Any thread may call them.
namespace replaced_new {

// Returns null when there is no memory; `new` then throws std::bad_alloc.
void* take(std::size_t bytes) noexcept;
void give(void* block) noexcept;

}  // namespace replaced_new
