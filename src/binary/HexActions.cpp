// What a HexEditor does to its document, and finding.

#include "binary/HexEditor.h"
#include "binary/HexText.h"
#include "viewbase/FindState.h"
#include "viewbase/HostCalls.h"
#include "viewbase/LongOperation.h"

#include <algorithm>

void HexEditor::TellFailedChange() { HostCalls::ShowStatus(surface, u"Failed changing the file"); }

void HexEditor::TellReadOnly() { HostCalls::ShowStatus(surface, u"The file can only be read"); }

void HexEditor::TypeHexDigit(Char digit) {
    const uint32_t value = HexPattern::DigitValue(digit);
    if (!document || value > 15) return;
    if (document->IsReadOnly()) return TellReadOnly();
    if (caret >= FileSize()) return;
    uint32_t count = 0;
    const uint8_t* old = page.BytesAt(*document, caret, count);
    if (count == 0) return TellFailedChange();
    const auto byte = static_cast<uint8_t>(lowNibble ? (*old & 0xF0) | value : (*old & 0x0F) | value << 4);
    const HexViewState state = {caret, lowNibble, caret + lowNibble, 1 - lowNibble};
    if (!document->EditBytes(caret, &byte, 1, this, state)) TellFailedChange();
}

// Digits that come from other programs are often broken into lines, which are blanks here.
HexPattern::Result HexEditor::ReadPasted(Array<uint8_t>& bytes) const {
    WString text;
    bool wholeLine = false;
    if (!surface.ReadClipboard(text, wholeLine)) return HexPattern::Result::Invalid;
    text.ReplaceAll(u'\r', u' ');
    text.ReplaceAll(u'\n', u' ');
    return HexPattern::Parse(text.Text(), text.Length(), bytes);
}

bool HexEditor::CanPaste() const {
    if (!document || document->IsReadOnly() || caret >= FileSize()) return false;
    Array<uint8_t> bytes;
    const HexPattern::Result result = ReadPasted(bytes);
    return result == HexPattern::Result::OutOfMemory || bytes.Count() != 0;
}

void HexEditor::Paste() {
    if (!document) return;
    if (document->IsReadOnly()) return TellReadOnly();
    Array<uint8_t> bytes;
    if (ReadPasted(bytes) == HexPattern::Result::OutOfMemory) return TellFailedChange();
    const uint64_t left = FileSize() - caret;
    const auto count = static_cast<size_t>(std::min<uint64_t>(bytes.Count(), left));
    if (count == 0) return;
    const HexViewState state = {caret, lowNibble, caret + count, lowNibble};
    if (!document->EditBytes(caret, bytes.Items(), count, this, state)) TellFailedChange();
}

void HexEditor::Undo() {
    if (document) document->DoCommand(DocumentCommand::Undo);
}

void HexEditor::Redo() {
    if (document) document->DoCommand(DocumentCommand::Redo);
}

void HexEditor::SelectAll() { SelectBytes(0, FileSize()); }

void HexEditor::GoTo(uint64_t offset) { MoveTo(offset, false); }

void HexEditor::Copy() {
    if (!document || !HasSelection()) return;
    WString text;
    if (AppendSelection(text)) {
        const ClipboardItem item = {ClipboardFormat::UnicodeText, text.Text(),
                                    (size_t(text.Length()) + 1) * sizeof(Char)};
        surface.WriteClipboard(&item, 1);
    } else {
        HostCalls::Warn(surface, u"Failed copying to clipboard");
    }
}

// Two digits and a blank for each byte. False when that is too much, or a byte cannot be read.
bool HexEditor::AppendSelection(WString& out) {
    constexpr uint32_t PerByte = 3;
    constexpr uint32_t Batch = 256; // bytes appended at a time
    Char text[Batch * PerByte];
    const uint64_t end = SelectionEnd();
    if (end - SelectionStart() > None32 / PerByte) return false;
    const uint64_t length = (end - SelectionStart()) * PerByte;
    if (length >= None32 || !out.Reserve(static_cast<uint32_t>(length))) return false;
    for (uint64_t offset = SelectionStart(); offset < end;) {
        uint32_t count = 0;
        const uint8_t* bytes = page.BytesAt(*document, offset, count);
        count = static_cast<uint32_t>(std::min<uint64_t>({count, end - offset, Batch}));
        if (count == 0) return false;
        for (uint32_t i = 0; i < count; ++i) {
            HexText::PutDigits(text + size_t{i} * PerByte, bytes[i], 2);
            text[i * PerByte + 2] = u' ';
        }
        if (!out.Append(text, int64_t{count} * PerByte)) return false;
        offset += count;
    }
    return true;
}

bool HexEditor::Search(bool backward, ByteHit& hit) {
    if (findState.searchHistory.Count() == 0) return false;
    const ByteQuery query = {backward ? SelectionStart() : SelectionEnd(), FileSize(), findState.matchCase, backward,
                             findState.hexPattern};
    {
        LongOperation progress(surface);
        if (document->FindBytes(findState.searchHistory.Newest(), query, hit, &progress)) return true;
    }
    // It would be wrong to say that the text was not found.
    if (document->SearchFailed()) {
        findState.cancelled = true;
        HostCalls::ShowStatus(surface, u"Failed reading the file");
    }
    return false;
}

bool HexEditor::FindNext(bool backward) {
    if (!document) return false;
    HostCalls::ShowStatus(surface, nullptr);
    ByteHit hit;
    if (!Search(backward, hit)) {
        HostCalls::SearchFailed(surface);
        return false;
    }
    SelectBytes(hit.offset + hit.length, hit.offset);
    if (hit.wrapped) HostCalls::ShowStatus(surface, u"Passed end of file");
    return true;
}
