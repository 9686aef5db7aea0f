#pragma once

#include "BinarySupport.h"
#include "binary/HexClipboard.h"
#include "binary/HexFind.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/SparseFile.h"
#include "support/TestHexView.h"
#include "viewbase/FindState.h"
#include "viewbase/ViewKey.h"

#include <memory>
#include <string>
#include <utility>

// A hex view with focus over a file, in a window of ten rows with a font of 8 x 16 pixels and no margin.
class HexViewTest : public ::testing::Test {
protected:
    static constexpr int32_t Rows = 10;

    HexViewTest() {
        LoadSettings(IniFile());
        settings.MarginWidth = 0;
    }
    ~HexViewTest() override {
        file.reset();
        findState.Release();
        findState.matchCase = findState.hexPattern = findState.searchUp = false;
        ReleaseSettings();
    }

    void Show(const std::string& content) {
        file = std::make_unique<OpenedFile>(content);
        Look();
    }
    // A file of that size without anything in it; false when there is no room for one.
    bool ShowEmpty(uint64_t size) {
        file = std::make_unique<OpenedFile>("");
        if (!ResizeSparsely(file->folder.File("file.bin"), size) || !(*file)->Open(file->path.c_str())) return false;
        Look();
        return true;
    }
    // A view of the file, with the focus.
    void Look() {
        shown = TestHexView::Create(**file);
        ASSERT_NE(shown, nullptr);
        Resize(Rows);
        input().OnAttached();
        surface().TakeFocus();
        surface().ForgetCalls();
    }
    void Resize(int32_t rows) {
        surface().SetSize(1000, rows * surface().metrics.lineHeight);
        input().OnSize(false);
    }

    HexEditor& view() const { return shown->editor; }
    HexInput& input() const { return shown->input; }
    FakeSurface& surface() const { return shown->surface; }
    FakeHost& host() const { return shown->surface.ownHost; }

    void Press(uint32_t key, bool ctrl = false, bool shift = false) {
        surface().ctrl = ctrl;
        surface().shift = shift;
        input().OnKeyDown(key);
        surface().ctrl = surface().shift = false;
    }
    void Shift(uint32_t key) { Press(key, false, true); }
    void Ctrl(uint32_t key, bool shift = false) { Press(key, true, shift); }
    void AltGr(uint32_t key) {
        surface().alt = true;
        Ctrl(key);
        surface().alt = false;
    }
    // Keys as the system reports them: the key, then its character.
    void Type(const std::u16string& digits) {
        for (const Char c : digits) {
            Press(c >= u'a' && c <= u'f' ? c - u'a' + u'A' : c);
            input().OnChar(c);
        }
    }
    void Copy() { HexClipboard::Copy(view()); }
    void Paste() { HexClipboard::Paste(view()); }
    void Paste(const std::u16string& text) {
        SetClipboard(text);
        Paste();
    }
    bool FindNext(bool backward) { return HexFind::FindNext(view(), backward); }
    void Undo() { (*file)->DoCommand(DocumentCommand::Undo); }
    void Redo() { (*file)->DoCommand(DocumentCommand::Redo); }
    // With the caret at an offset.
    uint64_t After(uint64_t caret, uint32_t key) {
        view().GoTo(caret);
        Press(key);
        return view().Caret();
    }
    void SetClipboard(const std::u16string& text) {
        surface().clipboardHasText = true;
        surface().clipboard = text;
    }
    void SearchFor(const std::u16string& text, bool hexPattern = false) {
        ASSERT_TRUE(findState.searchHistory.Add(text.data(), static_cast<uint32_t>(text.size())));
        findState.hexPattern = hexPattern;
    }
    // The byte at a cell of the window.
    uint64_t At(int32_t column, int32_t row) const { return view().PlaceAt({column * 8 + 3, row * 16 + 5}); }
    using Two = std::pair<uint64_t, uint64_t>;
    Two Selection() const { return {view().Anchor(), view().Caret()}; }
    Two Caret() const { return {view().Caret(), view().IsOnLowNibble()}; }
    std::string Content() const { return file->Content(); }
    std::u16string Status(StatusField field) const { return host().status[field]; }

    std::unique_ptr<OpenedFile> file;
    TestHexView* shown = nullptr;
};
