#pragma once

#include <windows.h>

#include <cstddef>
#include <ostream>

// What a running program holds of the system.
struct ProcessCounts {
    unsigned handles = 0;
    unsigned drawingObjects = 0; // of GDI
    unsigned windows = 0;        // top-level ones, hidden or not
    size_t memory = 0;           // private bytes, committed
};

// The counts are 0 where the system does not tell.
ProcessCounts CountsOf(DWORD process);

std::ostream& operator<<(std::ostream& out, const ProcessCounts& counts);
