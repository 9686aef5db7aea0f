#include "app/Window.h"

namespace window {

namespace {

// Memory in another process, for the messages whose answer is written through a pointer.
class RemoteBlock {
public:
    RemoteBlock(HWND window, SIZE_T bytes) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
        if (process) address = VirtualAllocEx(process, nullptr, bytes, MEM_COMMIT, PAGE_READWRITE);
    }
    ~RemoteBlock() {
        if (address) VirtualFreeEx(process, address, 0, MEM_RELEASE);
        if (process) CloseHandle(process);
    }
    RemoteBlock(const RemoteBlock&) = delete;
    RemoteBlock& operator=(const RemoteBlock&) = delete;

    LPARAM Address() const { return reinterpret_cast<LPARAM>(address); }
    bool Read(void* out, SIZE_T bytes) const {
        return address && ReadProcessMemory(process, address, out, bytes, nullptr);
    }

private:
    HANDLE process = nullptr;
    void* address = nullptr;
};

// False when the window's thread does not answer.
bool Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam, DWORD_PTR& answer) {
    return SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, 5000, &answer) != 0;
}

std::wstring WithoutMnemonic(const std::wstring& text) {
    std::wstring out;
    for (size_t i = 0; i < text.size(); i++)
        if (text[i] != L'&' || (i > 0 && text[i - 1] == L'&')) out += text[i];
    return out;
}

} // namespace

bool WaitFor(const std::function<bool()>& condition, DWORD milliseconds) {
    const ULONGLONG deadline = GetTickCount64() + milliseconds;
    while (!condition()) {
        if (GetTickCount64() > deadline) return false;
        Sleep(10); // between two looks, not in place of one
    }
    return true;
}

std::wstring ClassOf(HWND window) {
    wchar_t buffer[256] = {};
    GetClassNameW(window, buffer, 256);
    return buffer;
}

std::wstring TextOf(HWND window) {
    DWORD_PTR length = 0;
    if (!Ask(window, WM_GETTEXTLENGTH, 0, 0, length)) return {};
    std::wstring text(length + 1, L'\0');
    DWORD_PTR copied = 0;
    if (!Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), copied)) return {};
    text.resize(copied);
    return text;
}

std::vector<HWND> TopLevel(DWORD process) {
    struct Search {
        DWORD process;
        std::vector<HWND> found;
    } search{process, {}};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            Search& state = *reinterpret_cast<Search*>(parameter);
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            if (owner == state.process && IsWindowVisible(window)) state.found.push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::vector<HWND> Children(HWND parent, const wchar_t* className) {
    struct Search {
        const wchar_t* className;
        std::vector<HWND> found;
    } search{className, {}};
    EnumChildWindows(
        parent,
        [](HWND window, LPARAM parameter) -> BOOL {
            Search& state = *reinterpret_cast<Search*>(parameter);
            if (!state.className || ClassOf(window) == state.className) state.found.push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND Control(HWND parent, int number) {
    for (const HWND child : Children(parent))
        if (GetDlgCtrlID(child) == number) return child;
    return nullptr;
}

StatusPart ReadStatusPart(HWND statusBar, int part) {
    StatusPart result;
    DWORD_PTR length = 0;
    if (!Ask(statusBar, SB_GETTEXTLENGTHW, static_cast<WPARAM>(part), 0, length)) return result;
    result.drawing = HIWORD(length);
    std::wstring text(LOWORD(length) + size_t{1}, L'\0');
    const RemoteBlock block(statusBar, text.size() * sizeof(wchar_t));
    DWORD_PTR ignored = 0;
    if (!Ask(statusBar, SB_GETTEXTW, static_cast<WPARAM>(part), block.Address(), ignored)) return result;
    if (!block.Read(text.data(), text.size() * sizeof(wchar_t))) return result;
    text.pop_back();
    result.text = text;
    return result;
}

std::wstring DialogText(HWND dialog) {
    std::wstring text;
    for (const HWND child : Children(dialog, L"Static")) {
        const std::wstring part = TextOf(child);
        if (part.empty()) continue;
        if (!text.empty()) text += L'\n';
        text += part;
    }
    return text;
}

bool PressButton(HWND dialog, const std::wstring& text) {
    for (const HWND child : Children(dialog, L"Button"))
        if (WithoutMnemonic(TextOf(child)) == WithoutMnemonic(text)) return PostMessageW(child, BM_CLICK, 0, 0) != 0;
    return false;
}

} // namespace window
