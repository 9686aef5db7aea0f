#pragma once

#include "base/Assert.h"
#include "base/Heap.h"

#include <type_traits>

// Growable array of plain values. Growing takes the larger of twice the capacity and the size needed;
// Clear keeps the storage, so that a warm array allocates nothing.
template <class T> class Array {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    Array() = default;
    ~Array() { Heap::Free(items); }
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;

    size_t Count() const { return count; }
    bool IsEmpty() const { return count == 0; }
    T* Items() { return items; }
    const T* Items() const { return items; }
    T& operator[](size_t index) {
        ORVANE_ASSERT(index < count);
        return items[index];
    }
    const T& operator[](size_t index) const {
        ORVANE_ASSERT(index < count);
        return items[index];
    }
    T& Last() {
        ORVANE_ASSERT(count > 0);
        return items[count - 1];
    }

    // False when memory runs out, as in Append and SetCount; the array is then unchanged.
    [[nodiscard]] bool Reserve(size_t wanted) {
        if (wanted <= capacity) return true;
        size_t larger = capacity * 2 > wanted ? capacity * 2 : wanted;
        if (larger > SIZE_MAX / ItemSize) return false;
        void* grown = Heap::Resize(items, capacity * ItemSize, larger * ItemSize);
        if (!grown) return false;
        items = static_cast<T*>(grown);
        capacity = larger;
        return true;
    }

    [[nodiscard]] bool Append(const T& item) {
        const T copy = item; // `item` may be in the storage that moves
        if (!Reserve(count + 1)) return false;
        items[count++] = copy;
        return true;
    }

    // Appends to an array that has room for it, which cannot fail.
    void AppendReserved(const T& item) {
        ORVANE_ASSERT(count < capacity);
        items[count++] = item;
    }

    // Makes it `newCount` items. What added items hold is undefined until they are written.
    [[nodiscard]] bool SetCount(size_t newCount) {
        if (!Reserve(newCount)) return false;
        count = newCount;
        return true;
    }

    void RemoveLast() {
        ORVANE_ASSERT(count > 0);
        --count;
    }
    void Clear() { count = 0; }
    // Drops the items from `newCount` on; there must be as many.
    void Truncate(size_t newCount) {
        ORVANE_ASSERT(newCount <= count);
        count = newCount;
    }

    // Takes over the items of `other`, which is left empty, in a block that is no larger than they are.
    void TakeAll(Array& other) {
        Release();
        items = other.items;
        count = other.count;
        capacity = other.capacity;
        other.items = nullptr;
        other.count = other.capacity = 0;
        if (count == 0 || count == capacity) return;
        void* exact = Heap::Resize(items, capacity * ItemSize, count * ItemSize);
        if (!exact) return;
        items = static_cast<T*>(exact);
        capacity = count;
    }

    void Release() {
        Heap::Free(items);
        items = nullptr;
        count = capacity = 0;
    }

private:
    static constexpr size_t ItemSize = sizeof(T); // NOLINT(bugprone-sizeof-expression): a pointer, if that is T

    T* items = nullptr;
    size_t count = 0;
    size_t capacity = 0;
};
