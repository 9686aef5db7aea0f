#pragma once

#include "binary/BinaryDocument.h"
#include "support/TestServices.h"

// A view of a binary document without a window: it records what the document asks of it.
//
//     FakeHexView* view = FakeHexView::Create(document);   // in the document's list, which owns it
class FakeHexView final : public HexDocumentView {
public:
    explicit FakeHexView(BinaryDocument& shown) : document(shown) { ++alive; }
    FakeHexView(const FakeHexView&) = delete;
    FakeHexView& operator=(const FakeHexView&) = delete;

    // Makes a view through BinaryDocument::CreateView; null when that fails.
    static FakeHexView* Create(BinaryDocument& document) {
        hexServices.makeView = [](BinaryDocument& shown, NativeWindow) -> HexDocumentView* {
            return failNext ? (failNext = false, nullptr) : new FakeHexView(shown);
        };
        return static_cast<FakeHexView*>(document.CreateView(nullptr));
    }
    static inline bool failNext = false; // the next Create fails
    static inline int alive = 0;         // views that were made and not destroyed

    void ForgetCalls() { contentChanges = documentChanges = madeVisible = failuresReported = 0; }

    void SetCaret(HexCaret newCaret) override { caret = newCaret; }
    void MakeCaretVisible() override { ++madeVisible; }
    void ContentChanged() override { ++contentChanges; }
    void ReportEditFailure() override { ++failuresReported; }
    bool HasWindow() const override { return true; }
    bool HasFocus() const override { return false; }
    void Invalidate() override {}
    void DocumentChanged(Document*) override { ++documentChanges; }
    View* AsView() override { return nullptr; }
    void Destroy() override {
        document.ForgetView(this);
        delete this;
    }

    HexCaret caret;
    // Calls since ForgetCalls.
    int madeVisible = 0;
    int contentChanges = 0;
    int documentChanges = 0;
    int failuresReported = 0;

    // Not through `new` of the product: a view is no part of what runs out of memory in a test.
    static void* operator new(size_t bytes) { return ::operator new(bytes); }
    static void operator delete(void* block) { ::operator delete(block); }

private:
    ~FakeHexView() { --alive; }

    BinaryDocument& document;
};
