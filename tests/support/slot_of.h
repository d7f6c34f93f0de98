#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace test {

// The place of a virtual operation in its class's table, from 0. On this ABI a pointer to a virtual
// member function holds the byte offset in the table plus one; a destructor takes two places.
template <typename Class, typename Signature>
std::size_t slotOf(Signature Class::*operation) {
    std::uintptr_t word = 0;
    std::memcpy(&word, &operation, sizeof word);
    return (word - 1) / sizeof(void*);
}

}  // namespace test
