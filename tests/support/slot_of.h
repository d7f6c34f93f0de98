#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace test {

// The index of a virtual function in the table of its class, from 0. In this ABI a pointer to a
// virtual member function holds the byte offset in the table plus one. A destructor takes two slots
// of the table.
template <typename Class, typename Signature>
std::size_t slotOf(Signature Class::*operation) {
    std::uintptr_t word = 0;
    std::memcpy(&word, &operation, sizeof word);
    return (word - 1) / sizeof(void*);
}

}  // namespace test
