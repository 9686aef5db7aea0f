#include "list.h"

#include <stdexcept>

// Appends an item at the end.
void List::Append(int item) {
    if (count == Capacity) {
        throw std::length_error("the list is full");
    }
    items[count] = item;
    count = count + 1;
}

int List::Sum() const {
    int total = 0;
    for (int i = 0; i < count; ++i) {
        total += items[i];
    }
    return total
}
