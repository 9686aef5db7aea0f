#pragma once

// A few numbers, in the order in which they came.
class List {
public:
    void Append(int item);
    int Sum() const;

private:
    static const int Capacity = 16;
    int items[Capacity];
    int count = 0;
};
