#include "binary/HexClipboard.h"

#include "binary/HexEditor.h"
#include "binary/HexPattern.h"
#include "binary/HexText.h"
#include "viewbase/HostCalls.h"

#include <algorithm>

namespace {

// Two digits and a blank for each byte. False when that is too much, or a byte cannot be read.
bool AppendSelection(HexEditor& editor, WString& out) {
    using HexText::PerByte;
    constexpr uint32_t Batch = 256; // bytes appended at a time
    Char text[Batch * PerByte];
    const uint64_t end = editor.Selected().End();
    if (end - editor.Selected().Start() > WString::MaxCharacters / PerByte) return false;
    const uint64_t length = (end - editor.Selected().Start()) * PerByte;
    if (!out.Reserve(static_cast<uint32_t>(length))) return false;
    for (uint64_t offset = editor.Selected().Start(); offset < end;) {
        uint32_t count = 0;
        const uint8_t* bytes = editor.Page().BytesAt(*editor.GetBinaryDocument(), offset, count);
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

// Digits that come from other programs are often broken into lines, which are blanks here.
HexPattern::Result ReadPasted(const HexEditor& editor, Array<uint8_t>& bytes) {
    WString text;
    bool wholeLine = false;
    if (!editor.Surface().ReadClipboard(text, wholeLine)) return HexPattern::Result::Invalid;
    text.ReplaceAll(u'\r', u' ');
    text.ReplaceAll(u'\n', u' ');
    return HexPattern::Parse(text.Text(), text.Length(), bytes);
}

} // namespace

void HexClipboard::Copy(HexEditor& editor) {
    if (!editor.HasSelection()) return;
    WString text;
    if (AppendSelection(editor, text)) {
        const ClipboardItem item = {ClipboardFormat::UnicodeText, text.Text(),
                                    (size_t(text.Length()) + 1) * sizeof(Char)};
        editor.Surface().WriteClipboard(&item, 1);
    } else {
        HostCalls::Warn(editor.Surface(), HostCalls::CopyFailed);
    }
}

bool HexClipboard::CanPaste(const HexEditor& editor) {
    if (editor.GetBinaryDocument()->IsReadOnly() || editor.Caret() >= editor.FileSize()) return false;
    Array<uint8_t> bytes;
    const HexPattern::Result result = ReadPasted(editor, bytes);
    return result == HexPattern::Result::OutOfMemory || bytes.Count() != 0;
}

void HexClipboard::Paste(HexEditor& editor) {
    BinaryDocument& document = *editor.GetBinaryDocument();
    if (document.IsReadOnly()) return editor.ReportReadOnly();
    Array<uint8_t> bytes;
    if (ReadPasted(editor, bytes) == HexPattern::Result::OutOfMemory) return editor.ReportEditFailure();
    const uint64_t caret = editor.Caret();
    const auto count = static_cast<size_t>(std::min<uint64_t>(bytes.Count(), editor.FileSize() - caret));
    if (count == 0) return;
    const HexViewState state = {{caret, editor.IsOnLowNibble()}, {caret + count, editor.IsOnLowNibble()}};
    if (!document.EditBytes(caret, bytes.Items(), count, &editor, state)) editor.ReportEditFailure();
}
