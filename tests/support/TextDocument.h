#pragma once

#include "base/Scan.h"
#include "document/TextBuffer.h"
#include "support/TestServices.h"

#include <string>
#include <vector>

// Looks inside a text document and prepares one, for tests.
struct TextBufferProbe {
    // Fills an empty document with a text, as loading does: nothing to undo, not modified.
    static void Fill(TextBuffer& document, const std::u16string& text) {
        static_cast<void>(document.MakeEmpty());
        const auto count = static_cast<uint32_t>(text.size());
        const auto newLines = static_cast<uint32_t>(Scan::Reference::CountLineFeeds(text.data(), text.size()));
        static_cast<void>(Parts(document).store.Insert(0, text.data(), {count, newLines}));
    }
    static const LineCache& Cache(const TextBuffer& document) { return document.Parts().store.Cache(); }
    static const UndoRecord* UndoHead(const TextBuffer& document) { return document.History().UndoHead(); }
    static const UndoRecord* RedoHead(const TextBuffer& document) { return document.History().RedoHead(); }
    static const LineMarks& Marks(const TextBuffer& document) { return document.Parts().marks; }
    static uint32_t Capacity(const TextBuffer& document) { return document.Parts().store.Capacity(); }
    // What the product only reads.
    static TextParts& Parts(TextBuffer& document) { return const_cast<TextParts&>(document.Parts()); }
    static OutputRun& Run(TextBuffer& document) { return const_cast<OutputRun&>(document.Output().Run()); }
    // In the copy alone, which does not count as an edit.
    static void MarkEditLine(TextBuffer& document, uint32_t column, Char mark) {
        const_cast<WString&>(document.EditLineText()).Set(column, mark);
    }
    static void MarkSaved(TextBuffer& document) { const_cast<UndoHistory&>(document.History()).MarkSaved(); }
};

// What is searched for, up to a NUL, with case unless a test says otherwise.
inline SearchQuery Query(const std::u16string& text, bool matchCase = true, bool wholeWord = false) {
    return {text.c_str(), static_cast<uint32_t>(std::char_traits<char16_t>::length(text.c_str())), matchCase,
            wholeWord};
}

// A document that the test owns.
class TextDocument {
public:
    explicit TextDocument(const std::u16string& text = u"") : buffer(new TextBuffer(textServices)) {
        buffer->AddRef();
        TextBufferProbe::Fill(*buffer, text);
    }
    ~TextDocument() { buffer->Release(); }
    TextDocument(const TextDocument&) = delete;
    TextDocument& operator=(const TextDocument&) = delete;

    TextBuffer* operator->() const { return buffer; }
    TextBuffer& operator*() const { return *buffer; }

    // The text in the store, without what is pending in the edit line.
    std::u16string Store() const { return {buffer->Content(), buffer->Length()}; }
    // The text as the user sees it.
    std::u16string Text() const {
        std::u16string text = Store();
        if (buffer->HasPendingEdit()) {
            std::u16string line = EditLineText();
            // The terminator that ends the edit line of the last line is no part of the text.
            const bool isLast = buffer->EditLineNumber() + 1 == buffer->GetLineCount();
            if (isLast) line.pop_back();
            text.replace(buffer->EditLineStart(), buffer->EditLineStoreLength(), line);
        }
        return text;
    }
    // With its line feed or terminator.
    std::u16string EditLineText() const { return {buffer->EditLineText().Text(), buffer->EditLineText().Length()}; }
    // The states of the undo (redo) records, most recent first: 0 and 1 markers, 2 store, 3 pending.
    std::vector<uint32_t> UndoStates(size_t most = SIZE_MAX) const {
        return States(TextBufferProbe::UndoHead(*buffer), most);
    }
    std::vector<uint32_t> RedoStates(size_t most = SIZE_MAX) const {
        return States(TextBufferProbe::RedoHead(*buffer), most);
    }
    size_t UndoSteps() const { return Steps(TextBufferProbe::UndoHead(*buffer)); }
    std::vector<uint32_t> MarkedLines() const {
        std::vector<uint32_t> lines;
        for (LineMark* mark = TextBufferProbe::Marks(*buffer).Head(); mark; mark = mark->next)
            lines.push_back(mark->line);
        return lines;
    }

private:
    static std::vector<uint32_t> States(const UndoRecord* record, size_t most) {
        std::vector<uint32_t> states;
        for (; record && states.size() < most; record = record->next)
            states.push_back(static_cast<uint32_t>(record->state));
        return states;
    }
    static size_t Steps(const UndoRecord* record) {
        size_t steps = 0;
        int depth = 0;
        for (; record; record = record->next) {
            if (record->state == UndoRecord::State::GroupEnd) ++depth;
            if (record->state == UndoRecord::State::GroupBegin) --depth;
            if (depth == 0) ++steps;
        }
        return steps;
    }

    TextBuffer* buffer;
};
