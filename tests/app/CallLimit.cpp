#include "app/CallLimit.h"

#include <tlhelp32.h>

#include <cstring>

namespace {

// Counts down to the end of the process, or goes on to a function. What that gets stays in its registers.
constexpr unsigned char Code[] = {
    0x48, 0xB8, 0,    0,    0,    0,    0,    0, 0, 0, // mov rax, counter
    0xF0, 0x48, 0xFF, 0x08,                            // lock dec qword [rax]
    0x74, 0x0C,                                        // jz over the jump
    0x48, 0xB8, 0,    0,    0,    0,    0,    0, 0, 0, // mov rax, function
    0xFF, 0xE0,                                        // jmp rax
    0x48, 0x83, 0xEC, 0x28,                            // sub rsp, 40
    0x48, 0xC7, 0xC1, 0xFF, 0xFF, 0xFF, 0xFF,          // mov rcx, -1: this process
    0xBA, 99,   0,    0,    0,                         // mov edx, 99
    0x48, 0xB8, 0,    0,    0,    0,    0,    0, 0, 0, // mov rax, TerminateProcess
    0xFF, 0xD0,                                        // call rax
};
constexpr size_t CounterAt = 2;
constexpr size_t FunctionAt = 18;
constexpr size_t TerminateAt = 46;
constexpr size_t CodeSize = 64; // of each function
constexpr size_t MemorySize = 0x1000;

void* Pointer(uint64_t address) { return reinterpret_cast<void*>(address); }

// The program is the first of its modules.
uint64_t BaseOf(DWORD process) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process);
    MODULEENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    const bool found = Module32FirstW(snapshot, &entry);
    CloseHandle(snapshot);
    return found ? reinterpret_cast<uint64_t>(entry.modBaseAddr) : 0;
}

// Here; the library lies at the same place in every process.
uint64_t AddressOf(const char* function) {
    return reinterpret_cast<uint64_t>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), function));
}

} // namespace

CallLimit::CallLimit(DWORD processId)
    : process(OpenProcess(PROCESS_ALL_ACCESS, FALSE, processId)), base(BaseOf(processId)),
      memory(reinterpret_cast<uint64_t>(
          VirtualAllocEx(process, nullptr, MemorySize, MEM_COMMIT, PAGE_EXECUTE_READWRITE))) {}

CallLimit::~CallLimit() { CloseHandle(process); }

bool CallLimit::Read(uint64_t address, void* out, size_t count) const {
    return ReadProcessMemory(process, Pointer(address), out, count, nullptr) != 0;
}

bool CallLimit::Write(uint64_t address, const void* bytes, size_t count) const {
    return WriteProcessMemory(process, Pointer(address), bytes, count, nullptr) != 0;
}

uint64_t CallLimit::SlotOf(uint64_t function) const {
    IMAGE_DOS_HEADER dos = {};
    IMAGE_NT_HEADERS64 headers = {};
    if (!Read(base, &dos, sizeof dos) || !Read(base + static_cast<uint64_t>(dos.e_lfanew), &headers, sizeof headers))
        return 0;
    const IMAGE_DATA_DIRECTORY& table = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
    const uint64_t end = base + table.VirtualAddress + table.Size;
    for (uint64_t slot = base + table.VirtualAddress; slot < end; slot += sizeof slot) {
        uint64_t imported = 0;
        if (Read(slot, &imported, sizeof imported) && imported == function) return slot;
    }
    return 0;
}

bool CallLimit::Limit(uint64_t function, uint64_t code) const {
    const uint64_t slot = SlotOf(function);
    const uint64_t terminate = AddressOf("TerminateProcess");
    unsigned char bytes[sizeof Code];
    std::memcpy(bytes, Code, sizeof bytes);
    std::memcpy(bytes + CounterAt, &memory, sizeof memory);
    std::memcpy(bytes + FunctionAt, &function, sizeof function);
    std::memcpy(bytes + TerminateAt, &terminate, sizeof terminate);
    DWORD before = 0;
    return function && slot && Write(code, bytes, sizeof bytes) &&
           VirtualProtectEx(process, Pointer(slot), sizeof code, PAGE_READWRITE, &before) &&
           Write(slot, &code, sizeof code) && VirtualProtectEx(process, Pointer(slot), sizeof code, before, &before) &&
           FlushInstructionCache(process, nullptr, 0);
}

bool CallLimit::EndBefore(uint64_t number, std::initializer_list<const char*> functions) {
    if (!memory || !base || !Write(memory, &number, sizeof number)) return false;
    uint64_t code = memory + CodeSize;
    for (const char* const function : functions) {
        if (!Limit(AddressOf(function), code)) return false;
        code += CodeSize;
    }
    return true;
}
