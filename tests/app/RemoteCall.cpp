#include "app/RemoteCall.h"

#include <tlhelp32.h>

#include <cstddef>
#include <cstring>

namespace {

// What the thread gets: the function, its arguments, and the place of its result.
struct CallRecord {
    uint64_t function;
    uint64_t arguments[7];
    uint64_t result;
};

// A thread procedure that makes the call of a CallRecord.
constexpr unsigned char CallCode[] = {
    0x53,                         // push rbx
    0x48, 0x83, 0xEC, 0x50,       // sub rsp, 80
    0x48, 0x89, 0xCB,             // mov rbx, rcx
    0x48, 0x8B, 0x43, 0x28,       // mov rax, [rbx + 40]: the fifth to seventh argument
    0x48, 0x89, 0x44, 0x24, 0x20, // mov [rsp + 32], rax
    0x48, 0x8B, 0x43, 0x30,       // mov rax, [rbx + 48]
    0x48, 0x89, 0x44, 0x24, 0x28, // mov [rsp + 40], rax
    0x48, 0x8B, 0x43, 0x38,       // mov rax, [rbx + 56]
    0x48, 0x89, 0x44, 0x24, 0x30, // mov [rsp + 48], rax
    0x48, 0x8B, 0x4B, 0x08,       // mov rcx, [rbx + 8]
    0x48, 0x8B, 0x53, 0x10,       // mov rdx, [rbx + 16]
    0x4C, 0x8B, 0x43, 0x18,       // mov r8, [rbx + 24]
    0x4C, 0x8B, 0x4B, 0x20,       // mov r9, [rbx + 32]
    0xFF, 0x13,                   // call [rbx]
    0x48, 0x89, 0x43, 0x40,       // mov [rbx + 64], rax
    0x31, 0xC0,                   // xor eax, eax
    0x48, 0x83, 0xC4, 0x50,       // add rsp, 80
    0x5B,                         // pop rbx
    0xC3,                         // ret
};

// A function that fills a ReplacedCall, and the jump to it. The addresses and the result follow the first bytes of
// the moves.
constexpr unsigned char NoteCode[] = {
    0x48, 0xB8, 0,    0,    0, 0, 0, 0, 0, 0, // mov rax, notes
    0x48, 0x89, 0x08,                         // mov [rax], rcx
    0x48, 0x89, 0x50, 0x08,                   // mov [rax + 8], rdx
    0x4C, 0x89, 0x40, 0x10,                   // mov [rax + 16], r8
    0x4C, 0x89, 0x48, 0x18,                   // mov [rax + 24], r9
    0x48, 0xFF, 0x40, 0x20,                   // inc qword [rax + 32]
    0x48, 0xB8, 0,    0,    0, 0, 0, 0, 0, 0, // mov rax, result
    0xC3,                                     // ret
};
constexpr size_t NotesAt = 2;
constexpr size_t ResultAt = 31;
constexpr unsigned char JumpCode[] = {
    0x48, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, // mov rax, code
    0xFF, 0xE0,                         // jmp rax
};

uint64_t AddressOfModule(DWORD process, const wchar_t* library) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process);
    MODULEENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    uint64_t address = 0;
    for (BOOL found = Module32FirstW(snapshot, &entry); found && !address; found = Module32NextW(snapshot, &entry))
        if (lstrcmpiW(entry.szModule, library) == 0) address = reinterpret_cast<uint64_t>(entry.modBaseAddr);
    CloseHandle(snapshot);
    return address;
}

void* Pointer(uint64_t address) { return reinterpret_cast<void*>(address); }

constexpr uint64_t OneDay = uint64_t{24} * 60 * 60 * 10000000; // of 100 ns

} // namespace

bool AddWaitingThread(HANDLE process) {
    // The process may not have been loaded far enough for any other library; this one lies at the same place.
    const FARPROC wait = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtDelayExecution");
    void* const code = VirtualAllocEx(process, nullptr, sizeof CallCode + sizeof(CallRecord) + alignof(CallRecord),
                                      MEM_COMMIT, PAGE_EXECUTE_READWRITE);
    if (!wait || !code) return false;
    const uint64_t place = (reinterpret_cast<uint64_t>(code) + sizeof CallCode + 7) & ~uint64_t{7};
    CallRecord record = {};
    memcpy(&record.function, &wait, sizeof wait);
    record.arguments[0] = TRUE; // interruptible
    record.arguments[1] = place + offsetof(CallRecord, arguments[6]);
    record.arguments[6] = 0 - OneDay; // from now
    if (!WriteProcessMemory(process, code, CallCode, sizeof CallCode, nullptr)) return false;
    if (!WriteProcessMemory(process, Pointer(place), &record, sizeof record, nullptr)) return false;
    FlushInstructionCache(process, code, sizeof CallCode);
    const HANDLE thread = CreateRemoteThread(process, nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(code),
                                             Pointer(place), 0, nullptr);
    if (thread) CloseHandle(thread);
    return thread != nullptr;
}

RemoteProcess::RemoteProcess(DWORD processId)
    : id(processId), process(OpenProcess(PROCESS_ALL_ACCESS, FALSE, processId)) {
    code = reinterpret_cast<uint64_t>(
        VirtualAllocEx(process, nullptr, sizeof CallCode, MEM_COMMIT, PAGE_EXECUTE_READWRITE));
    blocks.push_back(code);
    Write(code, CallCode, sizeof CallCode);
    FlushInstructionCache(process, Pointer(code), sizeof CallCode);
}

RemoteProcess::~RemoteProcess() {
    for (const uint64_t block : blocks) VirtualFreeEx(process, Pointer(block), 0, MEM_RELEASE);
    CloseHandle(process);
}

uint64_t RemoteProcess::Allocate(size_t bytes) {
    blocks.push_back(reinterpret_cast<uint64_t>(VirtualAllocEx(process, nullptr, bytes, MEM_COMMIT, PAGE_READWRITE)));
    return blocks.back();
}

bool RemoteProcess::Write(uint64_t address, const void* bytes, size_t count) {
    return WriteProcessMemory(process, Pointer(address), bytes, count, nullptr) != 0;
}

bool RemoteProcess::Read(uint64_t address, void* out, size_t count) {
    return ReadProcessMemory(process, Pointer(address), out, count, nullptr) != 0;
}

bool RemoteProcess::Replace(const wchar_t* library, const char* function, uint64_t notes, uint64_t result) {
    const uint64_t replaced = AddressOf(library, function);
    const uint64_t note = reinterpret_cast<uint64_t>(
        VirtualAllocEx(process, nullptr, sizeof NoteCode, MEM_COMMIT, PAGE_EXECUTE_READWRITE));
    if (!replaced || !note) return false;
    blocks.push_back(note);
    unsigned char bytes[sizeof NoteCode];
    memcpy(bytes, NoteCode, sizeof bytes);
    memcpy(bytes + NotesAt, &notes, sizeof notes);
    memcpy(bytes + ResultAt, &result, sizeof result);
    unsigned char jump[sizeof JumpCode];
    memcpy(jump, JumpCode, sizeof jump);
    memcpy(jump + 2, &note, sizeof note);
    DWORD before = 0;
    return Write(note, bytes, sizeof bytes) &&
           VirtualProtectEx(process, Pointer(replaced), sizeof jump, PAGE_EXECUTE_READWRITE, &before) &&
           Write(replaced, jump, sizeof jump) && FlushInstructionCache(process, nullptr, 0);
}

// A library need not lie at the same address in both processes.
uint64_t RemoteProcess::AddressOf(const wchar_t* library, const char* function) {
    const HMODULE here = LoadLibraryW(library);
    uint64_t& there = libraries[library];
    if (!there) there = AddressOfModule(id, library);
    const uint64_t address = here ? reinterpret_cast<uint64_t>(GetProcAddress(here, function)) : 0;
    return address && there ? address - reinterpret_cast<uint64_t>(here) + there : 0;
}

uint64_t RemoteProcess::Call(const wchar_t* library, const char* function, std::initializer_list<uint64_t> arguments) {
    CallRecord record = {};
    record.function = AddressOf(library, function);
    size_t count = 0;
    for (const uint64_t argument : arguments) record.arguments[count++] = argument;
    const uint64_t address = Allocate(sizeof record);
    if (!record.function || !Write(address, &record, sizeof record)) return 0;
    const HANDLE thread = CreateRemoteThread(process, nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(code),
                                             Pointer(address), 0, nullptr);
    if (!thread) return 0;
    WaitForSingleObject(thread, 15000);
    CloseHandle(thread);
    return Read(address, &record, sizeof record) ? record.result : 0;
}
