#include "app/Clipboard.h"

#include "app/Window.h"

#include <cstring>

namespace clipboard {

namespace {

// The clipboard, open while this lives. Another program may hold it for a moment.
class Opened {
public:
    Opened() {
        open = window::WaitFor([] { return OpenClipboard(nullptr) != 0; });
    }
    ~Opened() {
        if (open) CloseClipboard();
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    bool open = false;
};

std::string Block(UINT format) {
    const Opened clipboard;
    const HANDLE block = clipboard.open ? GetClipboardData(format) : nullptr;
    const char* bytes = block ? static_cast<const char*>(GlobalLock(block)) : nullptr;
    if (!bytes) return {};
    std::string copy(bytes, GlobalSize(block));
    GlobalUnlock(block);
    return copy;
}

} // namespace

bool SetText(const std::wstring& text) {
    const Opened clipboard;
    if (!clipboard.open || !EmptyClipboard()) return false;
    const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (!block) return false;
    memcpy(GlobalLock(block), text.c_str(), bytes);
    GlobalUnlock(block);
    // From here on the block is the system's.
    return SetClipboardData(CF_UNICODETEXT, block) != nullptr;
}

bool Clear() {
    const Opened clipboard;
    return clipboard.open && EmptyClipboard();
}

bool HasFormat(const wchar_t* registeredName) {
    return IsClipboardFormatAvailable(RegisterClipboardFormatW(registeredName)) != 0;
}

std::wstring Text() {
    // Asked first, as it takes no hold of the clipboard: one who waits for a copy must not keep it from being made.
    if (!IsClipboardFormatAvailable(CF_UNICODETEXT)) return {};
    const std::string bytes = Block(CF_UNICODETEXT);
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return text.substr(0, text.find(L'\0'));
}

std::string Bytes(const wchar_t* registeredName) { return Block(RegisterClipboardFormatW(registeredName)); }

} // namespace clipboard
