#pragma once

#include "support/Random.h"
#include "support/ViewTest.h"

#include <algorithm>
#include <string>

inline bool IsWord(char16_t c) {
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' || c == u'#';
}

// The keys of the view over one plain string: every position is an offset, lines are found by walking.
struct EditorModel {
    std::u16string text;
    size_t caret = 0;
    size_t anchor = 0;
    size_t preferred = 0;
    bool overwrite = false;
    std::u16string clipboard;
    bool wholeLine = false;
    static constexpr size_t Tab = 4;
    static constexpr size_t Page = 10;

    size_t LineStart(size_t at) const { return at == 0 ? 0 : text.rfind(u'\n', at - 1) + 1; }
    size_t LineEnd(size_t at) const { return std::min(text.find(u'\n', at), text.size()); }
    size_t Column() const { return caret - LineStart(caret); }
    size_t Line(size_t at) const {
        return static_cast<size_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), u'\n'));
    }
    size_t StartOfLine(size_t line) const {
        size_t start = 0;
        for (; line; --line) {
            const size_t end = LineEnd(start);
            if (end == text.size()) break;
            start = end + 1;
        }
        return start;
    }
    bool Selected() const { return caret != anchor; }
    size_t From() const { return std::min(caret, anchor); }
    size_t To() const { return std::max(caret, anchor); }

    void Go(size_t at, bool extend, size_t column) {
        caret = at;
        preferred = column;
        if (!extend) anchor = caret;
    }
    void Go(size_t at, bool extend) { Go(at, extend, at - LineStart(at)); }
    void GoToLine(size_t line, bool extend) {
        const size_t start = StartOfLine(line);
        Go(start + std::min(preferred, LineEnd(start) - start), extend, preferred);
    }
    void Replace(size_t from, size_t to, const std::u16string& with) {
        text.replace(from, to - from, with);
        Go(from + with.size(), false);
    }
    bool DeleteSelection() {
        if (!Selected()) return false;
        Replace(From(), To(), u"");
        return true;
    }

    void Left(bool shift) { Go(caret ? caret - 1 : 0, shift); }
    void Right(bool shift) { Go(std::min(caret + 1, text.size()), shift); }
    void WordLeft(bool shift) {
        if (Column() == 0) return Left(shift);
        const size_t start = LineStart(caret);
        const bool word = IsWord(text[caret - 1]);
        size_t at = caret;
        while (at > start && IsWord(text[at - 1]) == word) --at;
        Go(at, shift);
    }
    size_t WordEnd(size_t at) const {
        const size_t end = LineEnd(at);
        if (at == end) return end;
        const bool word = IsWord(text[at]);
        while (at < end && IsWord(text[at]) == word) ++at;
        return at;
    }
    void WordRight(bool shift) {
        if (caret == LineEnd(caret)) return Right(shift);
        Go(WordEnd(caret), shift);
    }
    void Up(bool shift, size_t lines) {
        const size_t line = Line(caret);
        GoToLine(line > lines ? line - lines : 0, shift);
    }
    void Down(bool shift, size_t lines) { GoToLine(Line(caret) + lines, shift); }
    void Home(bool shift) {
        const size_t start = LineStart(caret);
        size_t first = start;
        while (first < LineEnd(start) && (text[first] == u' ' || text[first] == u'\t')) ++first;
        Go(caret == first ? start : first, shift);
    }
    void Type(char16_t c) {
        DeleteSelection();
        const bool over = overwrite && caret < LineEnd(caret);
        Replace(caret, caret + (over ? 1 : 0), std::u16string(1, c));
    }
    void TypeTab() {
        DeleteSelection();
        size_t visual = 0;
        for (size_t i = LineStart(caret); i < caret; ++i) visual += text[i] == u'\t' ? Tab : 1;
        Replace(caret, caret, std::u16string(Tab - visual % Tab, u' '));
    }
    void Enter() {
        DeleteSelection();
        const size_t start = LineStart(caret);
        std::u16string added = u"\n";
        for (size_t i = start; i < caret && (text[i] == u' ' || text[i] == u'\t'); ++i) added += text[i];
        const size_t end = LineEnd(caret);
        const bool blank = text.find_first_not_of(u" \t", caret) >= end;
        const size_t at = caret;
        if (blank) text.erase(at, end - at);
        Replace(at, at, added);
    }
    void Backspace(bool ctrl) {
        if (!ctrl && DeleteSelection()) return;
        const size_t column = Column();
        size_t count = 1;
        if (column > 0 && ctrl) {
            const size_t old = caret;
            EditorModel copy = *this;
            copy.WordLeft(false);
            count = old - copy.caret;
        } else if (column > 0 && text.find_first_not_of(u' ', LineStart(caret)) >= caret) {
            count = column % Tab ? column % Tab : Tab;
        }
        if (caret >= count) Replace(caret - count, caret, u"");
    }
    void Delete(bool ctrl) {
        if ((!ctrl && DeleteSelection()) || caret == text.size()) return;
        const size_t end = ctrl && caret < LineEnd(caret) ? WordEnd(caret) : caret + 1;
        Replace(caret, end, u"");
    }
    void Copy() {
        wholeLine = !Selected();
        clipboard = wholeLine
                        ? text.substr(LineStart(caret), std::min(LineEnd(caret) + 1, text.size()) - LineStart(caret))
                        : text.substr(From(), To() - From());
    }
    void Cut() {
        Copy();
        if (DeleteSelection()) return;
        const size_t start = LineStart(caret);
        Replace(start, start + clipboard.size(), u"");
    }
    void Paste(bool shift) {
        DeleteSelection();
        const size_t at = caret;
        if (wholeLine) {
            text.insert(LineStart(at), clipboard);
            Go(at + clipboard.size(), false);
            return;
        }
        Replace(at, at, clipboard);
        if (clipboard.find(u'\n') != clipboard.npos && !shift) anchor = at;
    }
    void SelectWord() {
        size_t start = caret;
        if (Column() > 0 && IsWord(text[caret - 1])) {
            while (start > LineStart(caret) && IsWord(text[start - 1])) --start;
        }
        const size_t end = WordEnd(start);
        Go(end, false);
        anchor = start;
    }
};

struct EditorModelTest : ViewTest {
    // One random action in both; its name.
    std::string Step(Random& random, EditorModel& model) {
        const bool shift = random.OneIn(3);
        const bool ctrl = random.OneIn(3);
        const char* const mode = ctrl ? shift ? " ctrl shift" : " ctrl" : shift ? " shift" : "";
        switch (random.Below(20)) {
        case 0:
            ctrl ? model.WordLeft(shift) : model.Left(shift);
            Press(ViewKey::Left, ctrl, shift);
            return std::string("left") + mode;
        case 1:
            ctrl ? model.WordRight(shift) : model.Right(shift);
            Press(ViewKey::Right, ctrl, shift);
            return std::string("right") + mode;
        case 2:
            model.Up(shift, 1);
            Press(ViewKey::Up, false, shift);
            return std::string("up") + mode;
        case 3:
            model.Down(shift, 1);
            Press(ViewKey::Down, false, shift);
            return std::string("down") + mode;
        case 4:
            ctrl ? model.Go(0, shift) : model.Home(shift);
            Press(ViewKey::Home, ctrl, shift);
            return std::string("home") + mode;
        case 5:
            model.Go(ctrl ? model.text.size() : model.LineEnd(model.caret), shift);
            Press(ViewKey::End, ctrl, shift);
            return std::string("end") + mode;
        case 6:
            model.Up(shift, EditorModel::Page);
            Press(ViewKey::PageUp, false, shift);
            return std::string("page up") + mode;
        case 7:
            model.Down(shift, EditorModel::Page);
            Press(ViewKey::PageDown, false, shift);
            return std::string("page down") + mode;
        case 8:
            model.Backspace(ctrl);
            Press(ViewKey::Backspace, ctrl);
            return std::string("backspace") + mode;
        case 9:
            model.Delete(ctrl);
            Press(ViewKey::Delete, ctrl);
            return std::string("delete") + mode;
        case 10:
            model.Copy();
            Ctrl(u'C');
            return "copy";
        case 11:
            model.Cut();
            Ctrl(u'X');
            return "cut";
        case 12:
            model.Paste(shift);
            Ctrl(u'V', shift);
            return std::string("paste") + mode;
        case 13:
            model.SelectWord();
            Ctrl(u'W');
            return "word";
        case 14:
            model.overwrite = !model.overwrite;
            Press(ViewKey::Insert);
            return "insert";
        case 15:
            model.Enter();
            Type(u"\r");
            return "enter";
        case 16:
            if (model.Line(model.From()) != model.Line(model.To())) return "";
            model.TypeTab();
            Type(u"\t");
            return "tab";
        default:
            const char16_t c = random.Pick(typed);
            model.Type(c);
            Type({c});
            return "type " + Plain({c});
        }
    }
    const std::u16string typed = u"ab_ (){}.\u00E4";
};
