#pragma once

#include "base/Types.h"
#include "base/win32/Windows.h"

#include <initializer_list>
#include <map>
#include <string>
#include <vector>

// Adds a thread to a process that has not run yet, which waits until the process ends. What others ask of the process
// (memory, threads) Wine lets a waiting thread do. Without one it interrupts the process wherever it is, and a thread
// that is made in the middle of an allocation waits forever for that allocation's lock.
bool AddWaitingThread(HANDLE process);

// Functions of the system's libraries, called inside another process. Menus and the memory of a drop can
// only be looked at and made from there.
class RemoteProcess {
public:
    explicit RemoteProcess(DWORD processId);
    ~RemoteProcess();
    RemoteProcess(const RemoteProcess&) = delete;
    RemoteProcess& operator=(const RemoteProcess&) = delete;

    // Calls a function with up to seven whole numbers or pointers of the other process on a thread of its
    // own. 0 also when the call could not be made.
    uint64_t Call(const wchar_t* library, const char* function, std::initializer_list<uint64_t> arguments);
    // What a replaced function was called with.
    struct ReplacedCall {
        uint64_t arguments[4];
        uint64_t count; // of all calls; the arguments are those of the last one
    };
    // From now on the function does nothing but note its call at the address, and return the result.
    bool Replace(const wchar_t* library, const char* function, uint64_t notes, uint64_t result);
    // Memory of the other process that lives as long as this object.
    uint64_t Allocate(size_t bytes);
    bool Write(uint64_t address, const void* bytes, size_t count);
    bool Read(uint64_t address, void* out, size_t count);

private:
    uint64_t AddressOf(const wchar_t* library, const char* function);

    DWORD id;
    HANDLE process;
    uint64_t code = 0;
    std::vector<uint64_t> blocks;
    std::map<std::wstring, uint64_t> libraries; // where they lie in the other process
};
