#pragma once

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
    T& operator[](size_t index) { return items[index]; }
    const T& operator[](size_t index) const { return items[index]; }
    T& Last() { return items[count - 1]; }

    // False when memory runs out; the array is then unchanged.
    bool Reserve(size_t wanted) {
        if (wanted <= capacity) return true;
        size_t larger = capacity * 2 > wanted ? capacity * 2 : wanted;
        if (larger > SIZE_MAX / ItemSize) return false;
        void* grown = Heap::Resize(items, capacity * ItemSize, larger * ItemSize);
        if (!grown) return false;
        items = static_cast<T*>(grown);
        capacity = larger;
        return true;
    }

    bool Append(const T& item) {
        const T copy = item; // `item` may lie in the storage that moves
        if (!Reserve(count + 1)) return false;
        items[count++] = copy;
        return true;
    }

    // Counts `newCount` items; those that come in hold anything and are to be written.
    bool SetCount(size_t newCount) {
        if (!Reserve(newCount)) return false;
        count = newCount;
        return true;
    }

    void RemoveLast() { --count; }
    void Clear() { count = 0; }
    void Truncate(size_t newCount) { count = newCount; }

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
