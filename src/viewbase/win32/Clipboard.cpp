#include "viewbase/win32/Clipboard.h"

#include "viewbase/win32/View.h"

#include <cstring>

namespace {

constexpr int OpenAttempts = 25;
constexpr DWORD OpenPause = 20; // milliseconds

// Another program may hold the clipboard for a moment; a short wait is better than a lost copy.
bool Open(HWND owner) {
    for (int attempt = 0; attempt < OpenAttempts; ++attempt) {
        if (OpenClipboard(owner)) return true;
        Sleep(OpenPause);
    }
    return false;
}

UINT SystemFormat(ClipboardFormat format) {
    switch (format) {
    case ClipboardFormat::WholeLine:
        return ViewClass::SingleLineFormat();
    case ClipboardFormat::RichText:
        return RegisterClipboardFormatW(L"Rich Text Format");
    case ClipboardFormat::Html:
        return RegisterClipboardFormatW(L"HTML Format");
    default:
        return CF_UNICODETEXT;
    }
}

enum class PutResult { Done, Refused, NoLock, NoMemory };

PutResult Put(const ClipboardItem& item) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, item.bytes);
    if (!block) return PutResult::NoMemory;
    void* data = GlobalLock(block);
    if (!data) {
        GlobalFree(block);
        return PutResult::NoLock;
    }
    memcpy(data, item.data, item.bytes);
    GlobalUnlock(block);
    if (SetClipboardData(SystemFormat(item.format), block)) return PutResult::Done;
    GlobalFree(block); // refused, so still ours
    return PutResult::Refused;
}

bool TakeText(const Char* data, size_t capacity, WString& text) {
    size_t length = 0;
    while (length < capacity && data[length]) ++length;
    return length < None32 && text.Assign(data, static_cast<int64_t>(length));
}

} // namespace

bool Clipboard::Read(HWND owner, WString& text, bool& wholeLine) {
    if (!IsClipboardFormatAvailable(CF_UNICODETEXT) || !Open(owner)) return false;
    bool read = false;
    const HANDLE block = GetClipboardData(CF_UNICODETEXT);
    if (const void* data = block ? GlobalLock(block) : nullptr) {
        read = TakeText(static_cast<const Char*>(data), GlobalSize(block) / sizeof(Char), text);
        GlobalUnlock(block);
    }
    wholeLine = IsClipboardFormatAvailable(ViewClass::SingleLineFormat()) != 0;
    CloseClipboard();
    return read;
}

bool Clipboard::Write(HWND owner, const ClipboardItem* items, uint32_t count) {
    if (!Open(owner)) return true;
    if (!EmptyClipboard()) {
        CloseClipboard();
        return true;
    }
    bool accepted = true;
    for (uint32_t i = 0; i < count; ++i) {
        const PutResult result = Put(items[i]);
        // The copy stops at once and the clipboard stays open: see docs/oddities.md.
        if (result == PutResult::NoMemory) return accepted;
        if (result == PutResult::NoLock) break;
        if (result == PutResult::Refused) accepted = false;
    }
    CloseClipboard();
    return accepted;
}
