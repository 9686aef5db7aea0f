#pragma once

#include "document/TextBuffer.h"

#include <deque>
#include <new>
#include <string>

// A view of a document: only where its caret is.
class CaretView final : public TextDocumentView {
public:
    explicit CaretView(Document* viewed = nullptr) : document(viewed) {}

    // A TextViewFactory.
    static TextDocumentView* Make(TextBuffer& text, NativeWindow) {
        auto* const view = new CaretView(&text);
        view->deletesItself = true;
        return view;
    }

    bool HasWindow() const override { return false; }
    bool HasFocus() const override { return false; }
    void Invalidate() override {}
    void InvalidateLines(LineRange) override {}
    void LineCountChanged() override {}
    void TextEdited(const TextChange&) override {}
    void ForgetAfter(uint32_t) override {}
    void PlaceCaret(TextPosition place) override { caretLine = place.line; }
    void PlaceSelection(TextSelection) override {}
    void PlaceTopLine(uint32_t) override {}
    void FollowChange(const TextChange&) override {}
    void FollowEnd(TextPosition) override {}
    void EditFinished() override {}
    TextPosition CaretPosition() const override { return {caretLine, 0}; }
    TextSelection Selection() const override { return {}; }
    uint32_t TopLine() const override { return 0; }
    void RefreshStatus() override {}
    void DocumentChanged(Document*) override {}
    void RunStateChanged(Document*, bool) override {}
    // Not to be looked into: it only distinguishes views.
    View* AsView() override { return reinterpret_cast<View*>(this); }
    void Destroy() override {
        destroyed = true;
        if (deletesItself) delete this;
    }

    Document* document;
    uint32_t caretLine = 0;
    bool destroyed = false;
    bool deletesItself = false;
};

// A document whose answers the test sets. It starts with one reference and one view.
class FakeDocument final : public Document {
public:
    static inline int alive = 0;

    static FakeDocument* WithFile(const std::u16string& path) {
        auto* document = new FakeDocument;
        document->path = path;
        return document;
    }
    static FakeDocument* WithTitle(const std::u16string& title) {
        auto* document = new FakeDocument;
        document->title = title;
        return document;
    }

    // Not through the product's heap: a fake is no part of what runs out of memory in a test.
    static void* operator new(size_t bytes) { return ::operator new(bytes); }
    static void operator delete(void* block) { ::operator delete(block); }

    uint32_t AddRef() override { return ++references; }
    uint32_t Release() override {
        if (--references) return references;
        delete this;
        return 0;
    }
    DocumentView* CreateView(NativeWindow) override {
        if (!makesViews) return nullptr;
        CaretView& made = moreViews.emplace_back(this);
        ViewNode* last = &firstNode;
        while (last->next) last = last->next;
        last->next = &nodes.emplace_back();
        last->next->view = &made;
        return &made;
    }
    bool IsModified() const override { return modified; }
    const Char* GetName() const override { return path.empty() ? title.c_str() : path.c_str(); }
    bool SetPath(const Char* name) override {
        path = name;
        return true;
    }
    const Char* GetTitle() const override { return title.c_str(); }
    bool SetTitle(const Char* text) override {
        title = text;
        return true;
    }
    bool Save(const Char* file, Encoding, LineEnding) override {
        savedTo = file;
        return savingWorks;
    }
    DocumentView* EnumViews(ViewNode* cursor, ViewNode*& next) const override {
        const ViewNode& node = cursor ? *cursor : firstNode;
        next = hasView ? node.next : nullptr;
        return hasView ? node.view : nullptr;
    }
    bool GetOutputState(bool& runs) const override {
        if (isOutput) runs = running;
        return isOutput;
    }
    bool IsChangedOnDisk() override {
        ++changeChecks;
        return changedOnDisk;
    }
    bool HasOtherFile() override { return changedOnDisk; }
    void MarkFileTimeNow() override {
        changedOnDisk = false;
        ++acceptedChanges;
    }
    bool Reload() override {
        ++reloads;
        if (reloadingWorks) changedOnDisk = false;
        return reloadingWorks;
    }
    void StopProcess() override {}
    bool CanDo(DocumentCommand) const override { return false; }
    bool DoCommand(DocumentCommand) override { return false; }
    void OnSettingsChanged(SettingsEffect) override {}
    bool GetEncoding(Encoding&, const Char* const*&) const override { return false; }
    bool IsBinary() const override { return binary; }
    bool GetSessionText(WString& out) const override { return out.Append(sessionText.c_str()); }
    void ResetSyntaxEngine() override {}
    LineEnding GetLineEnding() const override { return LineEnding::None; }
    bool FlushJournal() override { return true; }
    bool MayCheckDisk() override { return mayCheckDisk; }
    void JoinSteps(uint32_t) override {}

    std::u16string path;
    std::u16string title;
    std::u16string sessionText;
    std::u16string savedTo; // the file of the last Save
    CaretView view{this};
    std::deque<CaretView> moreViews;
    bool hasView = true;
    bool makesViews = true;
    bool savingWorks = true;
    bool modified = false;
    bool binary = false;
    bool isOutput = false;
    bool running = false;
    bool changedOnDisk = false;
    bool mayCheckDisk = true;
    bool reloadingWorks = true;
    int changeChecks = 0;
    int acceptedChanges = 0;
    int reloads = 0;

private:
    FakeDocument() {
        firstNode.view = &view;
        ++alive;
    }
    ~FakeDocument() { --alive; }

    uint32_t references = 1;
    ViewNode firstNode;
    std::deque<ViewNode> nodes;
};
