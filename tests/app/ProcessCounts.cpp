#include "app/ProcessCounts.h"

#include <winternl.h>

#include <psapi.h>

#include <cstdint>
#include <vector>

namespace {

// An entry of the table of drawing objects that a process shares with the system.
struct DrawingObject {
    uint64_t object;
    uint16_t owner;
    uint16_t count;
    uint16_t unique;
    uint8_t type; // 0: free
    uint8_t flags;
    uint64_t user;
};
constexpr size_t DrawingObjects = 65536;
constexpr size_t TableInProcessBlock = 0xF8;

// Wine does not count them (GetGuiResources), but keeps them in the table where Windows has had them; only for that
// case this reads what is not documented.
unsigned CountInTable(HANDLE process) {
    PROCESS_BASIC_INFORMATION basic = {};
    uint64_t table = 0;
    std::vector<DrawingObject> objects(DrawingObjects);
    if (NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0) return 0;
    const char* const block = reinterpret_cast<const char*>(basic.PebBaseAddress);
    if (!ReadProcessMemory(process, block + TableInProcessBlock, &table, sizeof table, nullptr)) return 0;
    if (!ReadProcessMemory(process, reinterpret_cast<const void*>(table), objects.data(),
                           objects.size() * sizeof(DrawingObject), nullptr))
        return 0;
    unsigned count = 0;
    for (const DrawingObject& object : objects) count += object.type != 0;
    return count;
}

// A handle of any process, as the system lists them.
struct ListedHandle {
    uint32_t process;
    uint8_t type;
    uint8_t flags;
    uint16_t value;
    uint64_t object;
    uint32_t access;
};
constexpr SYSTEM_INFORMATION_CLASS AllHandles = static_cast<SYSTEM_INFORMATION_CLASS>(16);

// Wine counts no handles either, but lists them.
unsigned CountInList(DWORD process) {
    std::vector<uint64_t> list(1 << 18);
    const auto bytes = static_cast<ULONG>(list.size() * sizeof list[0]);
    if (NtQuerySystemInformation(AllHandles, list.data(), bytes, nullptr) != 0) return 0;
    const auto* const handles = reinterpret_cast<const ListedHandle*>(&list[1]);
    unsigned count = 0;
    for (uint32_t i = 0; i < static_cast<uint32_t>(list[0]); i++) count += handles[i].process == process;
    return count;
}

BOOL CALLBACK CountWindow(HWND window, LPARAM counts) {
    auto& found = *reinterpret_cast<std::pair<DWORD, unsigned>*>(counts);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    found.second += process == found.first;
    return TRUE;
}

} // namespace

ProcessCounts CountsOf(DWORD processId) {
    ProcessCounts counts;
    const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId);
    if (!process) return counts;
    DWORD handles = 0;
    if (GetProcessHandleCount(process, &handles)) counts.handles = handles;
    if (!counts.handles) counts.handles = CountInList(processId);
    counts.drawingObjects = GetGuiResources(process, GR_GDIOBJECTS);
    if (!counts.drawingObjects) counts.drawingObjects = CountInTable(process);
    PROCESS_MEMORY_COUNTERS memory = {};
    if (GetProcessMemoryInfo(process, &memory, sizeof memory)) counts.memory = memory.PagefileUsage;
    CloseHandle(process);
    std::pair<DWORD, unsigned> windows{processId, 0};
    EnumWindows(CountWindow, reinterpret_cast<LPARAM>(&windows));
    counts.windows = windows.second;
    return counts;
}

std::ostream& operator<<(std::ostream& out, const ProcessCounts& counts) {
    return out << counts.handles << " handles, " << counts.drawingObjects << " drawing objects, " << counts.windows
               << " windows, " << counts.memory / 1024 << " KiB";
}
