#pragma once

#include "base/Text.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/TestView.h"
#include "support/TextDocument.h"
#include "syntax/EngineChoice.h"
#include "syntax/EngineDefinition.h"
#include "viewbase/FindState.h"
#include "viewbase/ViewKey.h"

#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

// Failing comparisons of text are to be read.
inline std::string Plain(const std::u16string& text) {
    std::string out;
    for (const char16_t c : text)
        out += c >= 32 && c < 127 ? std::string(1, static_cast<char>(c)) : c == u'\n' ? "\n" : c == u'\t' ? "\\t" : "?";
    return out;
}

// A text view with focus over a document, in a window of `columns` by `rows` characters beside gutter
// and margin. Every test starts with the default settings.
class ViewTest : public ::testing::Test {
protected:
    ViewTest() {
        LoadSettings(IniFile());
        settings.ShowLineNumbers = 0;
        settings.MarginWidth = 0;
        settings.ColumnGuide = 0;
        LoadEngineDefinitions(IniFile());
        Show(u"");
    }
    ~ViewTest() override {
        document.reset();
        findState.Release();
        findState.matchCase = findState.wholeWord = findState.searchUp = false;
        ReleaseEngineDefinitions();
        ReleaseSettings();
    }

    // Shows a text in a new document. "|" is where the caret is and "^" the other end of the
    // selection; without them the caret is at the start.
    void Show(std::u16string text, const Char* engine = nullptr) {
        const size_t caretMark = text.find(u'|');
        size_t anchorMark = text.find(u'^');
        size_t caret = caretMark == text.npos ? 0 : caretMark;
        size_t anchor = anchorMark == text.npos ? caret : anchorMark;
        if (caretMark != text.npos && anchorMark != text.npos) {
            if (anchor > caret)
                --anchor;
            else
                --caret;
        }
        std::erase(text, u'|');
        std::erase(text, u'^');
        Fill(text, engine);
        view().SelectRange({static_cast<uint32_t>(anchor), static_cast<uint32_t>(caret)});
        surface().ForgetCalls();
    }
    // The text as it is, without marks.
    void Fill(const std::u16string& text, const Char* engine = nullptr) {
        document = std::make_unique<TextDocument>(text);
        if (engine) (*document)->AttachEngine(ChooseEngine(engine, nullptr));
        shown = TestView::Create(**document);
        ASSERT_NE(shown, nullptr);
        Resize(80, 10);
        input().OnAttached();
        surface().TakeFocus();
        surface().ForgetCalls();
    }
    void Resize(int32_t columns, int32_t rows) {
        surface().SetSize(view().Viewport().TextLeft() + columns * surface().metrics.averageWidth,
                          rows * surface().metrics.lineHeight);
        input().OnSize(false);
    }

    TextBuffer& buffer() const { return **document; }
    TextEditor& view() const { return shown->editor; }
    TextInput& input() const { return shown->input; }
    FakeTextSurface& surface() const { return shown->surface; }
    FakeHost& host() const { return shown->surface.ownHost; }

    void Press(uint32_t key, bool ctrl = false, bool shift = false) {
        surface().ctrl = ctrl;
        surface().shift = shift;
        input().OnKeyDown(key);
        surface().ctrl = surface().shift = false;
    }
    void Ctrl(uint32_t key, bool shift = false) { Press(key, true, shift); }
    void AltGr(uint32_t key) {
        surface().alt = true;
        Ctrl(key);
        surface().alt = false;
    }
    void Type(const std::u16string& text) {
        for (const Char c : text) input().OnChar(c);
    }

    std::u16string Text() const { return document->Text(); }
    // The text with "|" at the caret and "^" at the other end of the selection.
    std::string Marked() const {
        std::u16string text = Text();
        const uint32_t caret = view().CaretOffset();
        const uint32_t anchor = view().SelectionAnchor();
        const bool caretFirst = caret <= anchor;
        if (caret != anchor && !caretFirst) text.insert(caret, u"|");
        if (caret != anchor) text.insert(anchor, u"^");
        if (caretFirst) text.insert(caret, u"|");
        return Plain(text);
    }
    std::string Status(StatusField field) const { return Plain(host().status[field]); }

    std::unique_ptr<TextDocument> document;
    TestView* shown = nullptr;
};
