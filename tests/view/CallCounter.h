#pragma once

#include "base/win32/Windows.h"

#include <cstring>
#include <utility>

// Where this program keeps the address of an imported system function; null when it imports none of
// that name. The layout of a program's import table is documented.
inline void** ImportSlot(const char* name) {
    auto* base = reinterpret_cast<BYTE*>(GetModuleHandleW(nullptr));
    const auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; library->Name; ++library) {
        const auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* slots = reinterpret_cast<void**>(base + library->FirstThunk);
        for (; names->u1.AddressOfData; ++names, ++slots) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* entry = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(entry->Name), name) == 0) return slots;
        }
    }
    return nullptr;
}

// Puts `function` in the place of an imported system function while it lives.
class ReplacedImport {
public:
    ReplacedImport(const char* name, void* function) : slot(ImportSlot(name)) {
        if (!slot) return;
        original = *slot;
        Put(function);
    }
    ~ReplacedImport() {
        if (slot) Put(original);
    }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;

    // Whether the program calls the function at all.
    bool IsImported() const { return slot != nullptr; }
    void* Original() const { return original; }

private:
    void Put(void* function) {
        DWORD old = 0;
        VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &old);
        *slot = function;
        VirtualProtect(slot, sizeof(*slot), old, &old);
    }

    void** slot;
    void* original = nullptr;
};

// Counts how often this program calls an imported system function while the counter lives. One at a time
// for each number.
//
//     CallCounter<0, decltype(SetScrollInfo)> sets("SetScrollInfo");
template <int Number, class Function> class CallCounter;
template <int Number, class Result, class... Arguments> class CallCounter<Number, Result WINAPI(Arguments...)> {
public:
    explicit CallCounter(const char* name) : import(name, reinterpret_cast<void*>(Replacement)) {
        calls = 0;
        original = reinterpret_cast<Type*>(import.Original());
    }

    // Whether the program calls the function at all.
    bool IsImported() const { return import.IsImported(); }
    // Since the last question.
    int Take() { return std::exchange(calls, 0); }

private:
    using Type = Result WINAPI(Arguments...);

    static Result WINAPI Replacement(Arguments... arguments) {
        ++calls;
        return original(arguments...);
    }

    static inline Type* original = nullptr;
    static inline int calls = 0;
    ReplacedImport import;
};
