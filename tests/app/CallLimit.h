#pragma once

#include "base/Types.h"
#include "base/win32/Windows.h"

#include <initializer_list>

// Lets a running program end in the middle of what it does. While an object of this class lives, the program ends just
// before the n-th call that it makes of certain functions of kernel32. It has to have ended when the object goes.
class CallLimit {
public:
    explicit CallLimit(DWORD processId);
    ~CallLimit();
    CallLimit(const CallLimit&) = delete;
    CallLimit& operator=(const CallLimit&) = delete;

    // The calls of all these functions together are counted, from 1 on. False when the program does not import one of
    // them by its import table.
    bool EndBefore(uint64_t number, std::initializer_list<const char*> functions);

private:
    bool Read(uint64_t address, void* out, size_t count) const;
    bool Write(uint64_t address, const void* bytes, size_t count) const;
    // Where the program keeps the address of a function that it imports; 0 when it does not.
    uint64_t SlotOf(uint64_t function) const;
    bool Limit(uint64_t function, uint64_t code) const;

    HANDLE process;
    uint64_t base;   // of the program
    uint64_t memory; // for the counter and the code, in the program
};
