#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace arbor {

// An array with inline storage for `Inline` elements: bags and snapshots hold a handful, and an
// allocation would cost more than the elements. Elements must move without throwing, so that growth
// either succeeds or, with std::bad_alloc, leaves the array as it was.
template <typename T, std::size_t Inline>
class SmallVector {
    static_assert(std::is_nothrow_move_constructible_v<T> && std::is_nothrow_move_assignable_v<T>);

public:
    SmallVector() noexcept = default;
    SmallVector(const SmallVector&) = delete;
    SmallVector& operator=(const SmallVector&) = delete;
    ~SmallVector() {
        clear();
        release();
    }

    [[nodiscard]] std::size_t size() const noexcept { return _size; }
    [[nodiscard]] bool empty() const noexcept { return _size == 0; }
    [[nodiscard]] T* begin() noexcept { return _elements; }
    [[nodiscard]] T* end() noexcept { return _elements + _size; }
    [[nodiscard]] const T* begin() const noexcept { return _elements; }
    [[nodiscard]] const T* end() const noexcept { return _elements + _size; }
    [[nodiscard]] T& operator[](std::size_t index) noexcept { return _elements[index]; }
    [[nodiscard]] const T& operator[](std::size_t index) const noexcept { return _elements[index]; }

    [[nodiscard]] bool isFull() const noexcept { return _size == _capacity; }

    // Makes sure that the next append needs no memory. May throw std::bad_alloc.
    void reserveOneMore() {
        if (isFull()) grow(_capacity * 2);
    }

    void append(T element) {
        reserveOneMore();
        emplaceReserved(std::move(element));
    }

    // Makes the last element, where reserveOneMore() has made room.
    template <typename... Arguments>
    T& emplaceReserved(Arguments&&... arguments) {
        // cppcheck-suppress legacyUninitvar ; it does not know placement new
        T* element = ::new (_elements + _size) T(std::forward<Arguments>(arguments)...);
        ++_size;
        return *element;
    }

    void erase(std::size_t index) noexcept {
        for (std::size_t next = index + 1; next < _size; ++next) {
            _elements[next - 1] = std::move(_elements[next]);
        }
        --_size;
        _elements[_size].~T();
    }

    // Fills the gap with the last element: cheaper than erase(), and the order is lost.
    void eraseUnordered(std::size_t index) noexcept {
        --_size;
        if (index != _size) _elements[index] = std::move(_elements[_size]);
        _elements[_size].~T();
    }

    void clear() noexcept {
        for (std::size_t index = 0; index < _size; ++index)
            _elements[index].~T();
        _size = 0;
    }

private:
    [[nodiscard]] T* inlineElements() noexcept { return reinterpret_cast<T*>(_inlineElements); }

    void grow(std::size_t capacity) {
        T* elements = std::allocator<T>{}.allocate(capacity);
        for (std::size_t index = 0; index < _size; ++index) {
            new (elements + index) T(std::move(_elements[index]));
            _elements[index].~T();
        }
        release();
        _elements = elements;
        _capacity = capacity;
    }

    void release() noexcept {
        if (_elements != inlineElements()) std::allocator<T>{}.deallocate(_elements, _capacity);
    }

    // NOLINTNEXTLINE(bugprone-sizeof-expression): the elements may be pointers
    alignas(T) std::byte _inlineElements[Inline * sizeof(T)];
    T* _elements = inlineElements();
    std::size_t _size = 0;
    std::size_t _capacity = Inline;
};

}  // namespace arbor
