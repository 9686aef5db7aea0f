#pragma once

#include "TestServices.h"
#include "document/TextBuffer.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

// A view of a text document without anything to look at: it keeps caret, selection and top line the way
// a real view does, and records what the document asks of it. Offsets count the pending edit line in
// its edited form.
//
//     FakeView* view = FakeView::Create(document);   // in the document's list, which owns it
//     view->Activate();
class FakeView final : public TextDocumentView {
public:
    explicit FakeView(TextBuffer& shown) : document(shown) { ++alive; }
    FakeView(const FakeView&) = delete;
    FakeView& operator=(const FakeView&) = delete;

    // Makes a view through TextBuffer::CreateView; null when that fails.
    static FakeView* Create(TextBuffer& document, bool withWindow = true) {
        textServices.makeView = [](TextBuffer& shown, NativeWindow) -> TextDocumentView* {
            return failNext ? (failNext = false, nullptr) : new FakeView(shown);
        };
        auto* view = static_cast<FakeView*>(document.CreateView(nullptr));
        if (view) view->window = withWindow;
        return view;
    }
    static inline bool failNext = false; // the next Create fails
    static inline int alive = 0;         // views that were made and not destroyed

    // What WM_SETFOCUS does.
    void Activate() {
        focus = true;
        document.SetActiveView(this);
        static_cast<void>(document.LoadEditLine(place.line));
    }
    // As the user would: with the line opened when this is the active view.
    void MoveCaret(uint32_t line, uint32_t column) {
        Open(line);
        Place({line, column});
        anchor = caret;
    }
    void PutCaret(uint32_t line, uint32_t column) { MoveCaret(line, column); }
    void SelectRange(uint32_t newAnchor, uint32_t newCaret) {
        Open(document.OffsetToLineColumn(std::min(newCaret, TextLength())).line);
        PlaceSelection({newAnchor, newCaret});
    }
    void SetTopLine(uint32_t line) { topLine = line; }
    void ForgetCalls() {
        invalidations = lineCountChanges = caretMoves = statusRefreshes = documentChanges = editsFinished = 0;
        invalidatedLines.clear();
        textChanges.clear();
        runStates.clear();
    }

    bool HasWindow() const override { return window; }
    bool HasFocus() const override { return focus; }
    void Invalidate() override { ++invalidations; }
    void InvalidateLines(LineRange lines) override { invalidatedLines.push_back(lines); }
    void LineCountChanged() override { ++lineCountChanges; }
    void TextEdited(const TextChange&) override {}
    void ForgetAfter(uint32_t offset) override {
        onForgotten();
        textChanges.push_back(offset);
        movesBeforeChange = caretMoves;
    }
    void PlaceCaret(TextPosition wanted) override {
        onMoved();
        ++caretMoves;
        Place(wanted);
        anchor = caret;
    }
    void PlaceSelection(TextSelection selection) override {
        onMoved();
        const uint32_t end = TextLength();
        const uint32_t newCaret = std::min(selection.caret, end);
        Place(document.OffsetToLineColumn(newCaret));
        anchor = std::min(selection.anchor, end);
        caret = newCaret;
    }
    void PlaceTopLine(uint32_t line) override { topLine = line; }
    void EditFinished() override {
        ++editsFinished;
        openLineAtEnd = document.EditLineNumber();
    }
    void FollowChange(const TextChange& change) override {
        anchor = change.Moved(anchor);
        const uint32_t moved = change.Moved(caret);
        if (change.ChangesLines()) {
            place = document.OffsetToLineColumn(moved);
        } else if (place.line == change.startLine) {
            place.column += moved - caret;
        }
        caret = moved;
        topLine = change.MovedLine(topLine);
    }
    void FollowEnd(TextPosition end) override { PlaceCaret(end); }
    TextPosition CaretPosition() const override { return place; }
    TextSelection Selection() const override { return {anchor, caret}; }
    uint32_t TopLine() const override { return topLine; }
    void RefreshStatus() override { ++statusRefreshes; }
    void DocumentChanged(Document*) override {
        onModified();
        ++documentChanges;
    }
    void RunStateChanged(Document*, bool running) override { runStates.push_back(running); }
    View* AsView() override { return nullptr; }
    void Destroy() override {
        document.ForgetView(this);
        delete this;
    }

    bool window = true;
    bool focus = false;
    std::function<void()> onMoved = [] {};     // called whenever an edit moves the caret
    std::function<void()> onForgotten = [] {}; // called whenever what is remembered does not hold any more
    std::function<void()> onModified = [] {};  // called whenever the frame is told that the document may be modified
    // Calls since ForgetCalls.
    int invalidations = 0;
    int lineCountChanges = 0;
    int caretMoves = 0;
    int statusRefreshes = 0;
    int documentChanges = 0;
    int editsFinished = 0;
    uint32_t openLineAtEnd = NoLine; // the document's edit line when the last edit was over
    std::vector<LineRange> invalidatedLines;
    std::vector<bool> runStates;
    std::vector<uint32_t> textChanges;
    int movesBeforeChange = 0; // of the caret, before the last text change was reported

    // Not through `new` of the product: a view is no part of what runs out of memory in a test.
    static void* operator new(size_t bytes) { return ::operator new(bytes); }
    static void operator delete(void* block) { ::operator delete(block); }

private:
    ~FakeView() { --alive; }

    uint32_t PendingGrowth() const {
        return document.HasPendingEdit() ? document.EditLineText().Length() - document.EditLineStoreLength() : 0;
    }
    uint32_t TextLength() const { return document.Length() + PendingGrowth(); }
    void Open(uint32_t line) {
        if (document.ActiveView() == this && document.EditLineNumber() != NoLine)
            static_cast<void>(document.LoadEditLine(line));
    }
    void Place(TextPosition wanted) {
        place.line = std::min(wanted.line, document.GetLineCount() - 1);
        const bool open = document.EditLineNumber() == place.line;
        bool isLast = false;
        uint32_t start = document.LineToOffset(place.line);
        const uint32_t lineLength = open ? document.EditLineText().Length() - 1 : document.LineLength(start, isLast);
        if (place.line > document.EditLineNumber()) start += PendingGrowth();
        place.column = std::min(wanted.column, lineLength);
        caret = start + place.column;
    }

    TextBuffer& document;
    TextPosition place;
    uint32_t anchor = 0;
    uint32_t caret = 0;
    uint32_t topLine = 0;
};
