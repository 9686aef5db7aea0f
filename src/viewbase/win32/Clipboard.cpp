#include "viewbase/win32/Clipboard.h"

#include "base/win32/Handles.h"

#include <cstring>

namespace {

// A short wait for another program is better than a lost copy.
constexpr int OpenAttempts = 25;

UINT SystemFormat(ClipboardFormat format) {
    switch (format) {
    case ClipboardFormat::WholeLine:
        return Clipboard::WholeLineFormat();
    case ClipboardFormat::RichText:
        return RegisterClipboardFormatW(L"Rich Text Format");
    case ClipboardFormat::Html:
        return RegisterClipboardFormatW(L"HTML Format");
    default:
        return CF_UNICODETEXT;
    }
}

enum class PutResult { Done, Refused, NoLock, NoMemory };

bool Fill(const GlobalBlock& block, const ClipboardItem& item) {
    const GlobalAddress address(block.Get());
    if (address.Get()) memcpy(address.Get(), item.data, item.bytes);
    return address.Get() != nullptr;
}

PutResult Put(const ClipboardItem& item) {
    GlobalBlock block(item.bytes);
    if (!block.Get()) return PutResult::NoMemory;
    if (!Fill(block, item)) return PutResult::NoLock;
    if (!SetClipboardData(SystemFormat(item.format), block.Get())) return PutResult::Refused;
    block.GiveAway();
    return PutResult::Done;
}

bool TakeText(const Char* data, size_t capacity, WString& text) {
    size_t length = 0;
    while (length < capacity && data[length]) ++length;
    return length <= WString::MaxCharacters && text.Assign(data, static_cast<int64_t>(length));
}

} // namespace

UINT Clipboard::WholeLineFormat() { return RegisterClipboardFormatW(L"orvane_singleline"); }

bool Clipboard::Read(HWND owner, WString& text, bool& wholeLine) {
    if (!IsClipboardFormatAvailable(CF_UNICODETEXT)) return false;
    const OpenedClipboard clipboard(owner, OpenAttempts);
    if (!clipboard.IsOpen()) return false;
    wholeLine = IsClipboardFormatAvailable(WholeLineFormat()) != 0;
    const HANDLE block = GetClipboardData(CF_UNICODETEXT);
    const GlobalAddress address(block);
    return address.Get() && TakeText(static_cast<const Char*>(address.Get()), GlobalSize(block) / sizeof(Char), text);
}

bool Clipboard::Write(HWND owner, const ClipboardItem* items, uint32_t count) {
    OpenedClipboard clipboard(owner, OpenAttempts);
    if (!clipboard.IsOpen() || !EmptyClipboard()) return true;
    bool accepted = true;
    for (uint32_t i = 0; i < count; ++i) {
        const PutResult result = Put(items[i]);
        if (result == PutResult::NoMemory) clipboard.Detach(); // stays open: docs/oddities.md
        if (result == PutResult::NoMemory || result == PutResult::NoLock) break;
        if (result == PutResult::Refused) accepted = false;
    }
    return accepted;
}
