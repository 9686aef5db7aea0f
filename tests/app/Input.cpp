#include "app/Input.h"

#include "app/Window.h"

#include <sstream>
#include <vector>

namespace input {

namespace {

struct KeyName {
    const wchar_t* name;
    WORD key;
    bool extended;
};

const KeyName KeyNames[] = {
    {L"Ctrl", VK_CONTROL, false}, {L"Shift", VK_SHIFT, false},    {L"Alt", VK_MENU, false},
    {L"Enter", VK_RETURN, false}, {L"Escape", VK_ESCAPE, false},  {L"Tab", VK_TAB, false},
    {L"Space", VK_SPACE, false},  {L"Backspace", VK_BACK, false}, {L"Break", VK_CANCEL, true},
    {L"Insert", VK_INSERT, true}, {L"Delete", VK_DELETE, true},   {L"Home", VK_HOME, true},
    {L"End", VK_END, true},       {L"PageUp", VK_PRIOR, true},    {L"PageDown", VK_NEXT, true},
    {L"Left", VK_LEFT, true},     {L"Right", VK_RIGHT, true},     {L"Up", VK_UP, true},
    {L"Down", VK_DOWN, true},     {L"]", VK_OEM_6, false},
};

bool IsExtended(WORD key) {
    for (const KeyName& entry : KeyNames)
        if (entry.key == key) return entry.extended;
    return false;
}

// 0 when there is no key of that name.
WORD KeyOf(const std::wstring& name) {
    for (const KeyName& entry : KeyNames)
        if (name == entry.name) return entry.key;
    if (name.size() == 1 && ((name[0] >= L'A' && name[0] <= L'Z') || (name[0] >= L'0' && name[0] <= L'9')))
        return static_cast<WORD>(name[0]);
    if (name.size() >= 2 && name[0] == L'F') {
        const int number = _wtoi(name.c_str() + 1);
        if (number >= 1 && number <= 12) return static_cast<WORD>(VK_F1 + number - 1);
    }
    return 0;
}

// Key events that are sent in one call, so that no other program's come between them.
class Events {
public:
    void Key(WORD key, bool down) {
        INPUT& event = Add();
        event.ki.wVk = key;
        event.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
        event.ki.dwFlags = (down ? 0u : KEYEVENTF_KEYUP) | (IsExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0u);
    }
    void Unicode(wchar_t unit) {
        for (const DWORD flags : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
            INPUT& event = Add();
            event.ki.wScan = unit;
            event.ki.dwFlags = KEYEVENTF_UNICODE | flags;
        }
    }
    void Mouse(POINT place, DWORD buttons = 0) {
        const auto share = [](LONG at, int pixels) { return (at * 65536 + 32768) / pixels; };
        events.emplace_back();
        INPUT& event = events.back();
        event.type = INPUT_MOUSE;
        event.mi.dx = share(place.x, GetSystemMetrics(SM_CXSCREEN));
        event.mi.dy = share(place.y, GetSystemMetrics(SM_CYSCREEN));
        event.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | buttons;
    }
    void Send() {
        if (events.empty()) return;
        SendInput(static_cast<UINT>(events.size()), events.data(), sizeof(INPUT));
        events.clear();
    }

private:
    INPUT& Add() {
        events.emplace_back();
        events.back().type = INPUT_KEYBOARD;
        return events.back();
    }

    std::vector<INPUT> events;
};

// Presses keys until the system shows them pressed. When the mouse comes into a window, Wine takes over the state of
// the real keyboard, in which nothing is; some time later, and past every hook.
void Hold(const WORD* keys, int count) {
    const auto isUp = [&](int i) { return GetAsyncKeyState(keys[i]) >= 0; };
    window::WaitFor([&] {
        Events events;
        bool all = true;
        for (int i = 0; i < count; i++)
            if (isUp(i)) {
                events.Key(keys[i], true);
                all = false;
            }
        if (!all) events.Send();
        return all;
    });
}

// "Ctrl+Shift+Home": everything pressed in order and released in reverse.
bool Chord(const std::wstring& chord, Events& events) {
    std::wistringstream parts(chord);
    std::wstring name;
    WORD keys[4] = {};
    int count = 0;
    while (count < 4 && std::getline(parts, name, L'+')) {
        keys[count] = KeyOf(name);
        if (!keys[count++]) return false;
    }
    if (count > 1) {
        events.Send();
        Hold(keys, count - 1);
    }
    for (int i = count > 1 ? count - 1 : 0; i < count; i++) events.Key(keys[i], true);
    for (int i = count; i-- > 0;) events.Key(keys[i], false);
    return true;
}

LRESULT CALLBACK DropOtherKey(int code, WPARAM message, LPARAM event) {
    const bool ours = reinterpret_cast<const KBDLLHOOKSTRUCT*>(event)->flags & LLKHF_INJECTED;
    return code == HC_ACTION && !ours ? 1 : CallNextHookEx(nullptr, code, message, event);
}

// The hook is called in the thread that set it, which has to look for messages all the time.
DWORD WINAPI WatchKeyboard(void* ready) {
    const HHOOK hook = SetWindowsHookExW(WH_KEYBOARD_LL, DropOtherKey, GetModuleHandleW(nullptr), 0);
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE); // makes the queue to which the end is posted
    SetEvent(ready);
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    }
    UnhookWindowsHookEx(hook);
    return 0;
}

} // namespace

void MoveMouse(POINT place) {
    Events events;
    events.Mouse(place);
    events.Send();
}

void HoldLeftButton(POINT place) {
    Events events;
    events.Mouse(place);
    events.Mouse(place, MOUSEEVENTF_LEFTDOWN);
    events.Send();
}

void ReleaseLeftButton(POINT place) {
    Events events;
    events.Mouse(place, MOUSEEVENTF_LEFTUP);
    events.Send();
}

void Click(POINT place, int times) {
    Events events;
    events.Mouse(place);
    for (int i = 0; i < times; i++) {
        events.Mouse(place, MOUSEEVENTF_LEFTDOWN);
        events.Mouse(place, MOUSEEVENTF_LEFTUP);
    }
    events.Send();
}

void RightClick(POINT place) {
    Events events;
    events.Mouse(place);
    events.Mouse(place, MOUSEEVENTF_RIGHTDOWN);
    events.Mouse(place, MOUSEEVENTF_RIGHTUP);
    events.Send();
}

OnlyOurs::OnlyOurs() {
    const HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    thread = CreateThread(nullptr, 0, WatchKeyboard, ready, 0, &threadId);
    if (thread) WaitForSingleObject(ready, INFINITE);
    CloseHandle(ready);
}

OnlyOurs::~OnlyOurs() {
    if (!thread) return;
    PostThreadMessageW(threadId, WM_QUIT, 0, 0);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

bool Keys(const std::wstring& keys) {
    std::wistringstream chords(keys);
    std::wstring chord;
    Events events;
    while (chords >> chord) {
        if (chord[0] == L'+' || chord[0] == L'-') {
            const WORD key = KeyOf(chord.substr(1));
            if (!key) return false;
            events.Key(key, chord[0] == L'+');
        } else if (!Chord(chord, events)) {
            return false;
        }
    }
    events.Send();
    return true;
}

void Type(const std::wstring& text) {
    Events events;
    for (const wchar_t unit : text) {
        // Low byte: the key; high byte: 1 with Shift, more with other modifiers; -1: no key.
        const SHORT scan = unit == L'\n' ? SHORT{VK_RETURN} : VkKeyScanW(unit);
        if (scan == -1 || HIBYTE(scan) > 1) {
            events.Unicode(unit);
            continue;
        }
        const bool shift = HIBYTE(scan) == 1;
        if (shift) events.Key(VK_SHIFT, true);
        events.Key(LOBYTE(scan), true);
        events.Key(LOBYTE(scan), false);
        if (shift) events.Key(VK_SHIFT, false);
    }
    events.Send();
}

} // namespace input
