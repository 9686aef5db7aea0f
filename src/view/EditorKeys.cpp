#include "view/EditorKeys.h"

#include "view/CaretStops.h"
#include "view/EditorClipboard.h"
#include "view/EditorCommands.h"
#include "view/EditorFind.h"
#include "view/EditorNavigation.h"
#include "view/EditorTyping.h"
#include "view/TextEditor.h"
#include "view/Words.h"
#include "viewbase/KeyBindings.h"
#include "viewbase/ViewKey.h"

namespace {

// What a key press is about to work on.
struct KeyPress {
    TextEditor& editor;
    bool shift;
    uint32_t line;
    uint32_t column;
    TextSpan text;

    void Move(TextPosition place) const {
        if (!shift) editor.CollapseSelection();
        editor.MoveCaret(place, shift, CaretStop::WholeCharacters);
        editor.GetTextSurface().UpdateNow();
    }
    uint32_t Rows() const { return static_cast<uint32_t>(editor.VisibleLines()); }
};

void ToPreviousLineEnd(const KeyPress& press) {
    if (press.line == 0) return press.Move({0, 0});
    press.Move({press.line - 1, press.editor.Text().Line(press.line - 1).length});
}

void Left(const KeyPress& press) {
    if (press.column == 0) return ToPreviousLineEnd(press);
    press.Move({press.line, CaretStops::Before(press.text, press.column)});
}

void WordLeft(const KeyPress& press) {
    if (press.column == 0) return ToPreviousLineEnd(press);
    press.Move({press.line, Words::StartBefore(press.text, press.column)});
}

void Right(const KeyPress& press) {
    if (press.column < press.text.length) return press.Move({press.line, CaretStops::After(press.text, press.column)});
    if (press.line + 1 < press.editor.Text().LineCount()) return press.Move({press.line + 1, 0});
    press.Move({press.line, press.column});
}

void WordRight(const KeyPress& press) {
    if (press.column >= press.text.length) return Right(press);
    press.Move({press.line, CaretStops::AtOrAfter(press.text, Words::EndAfter(press.text, press.column))});
}

void Up(const KeyPress& press) {
    press.Move({press.line ? press.line - 1 : 0, press.editor.Caret().PreferredColumn()});
}

void Down(const KeyPress& press) { press.Move({press.line + 1, press.editor.Caret().PreferredColumn()}); }

// Scrolls by one line; the caret moves only when it would leave the view, and not when it is out of it.
void ScrollUp(const KeyPress& press) {
    TextEditor& editor = press.editor;
    const uint32_t top = editor.TopLine();
    if (top == 0) return;
    editor.SetTopLine(top - 1);
    if (press.line > 0 && press.line + 1 == uint64_t(top) + press.Rows()) {
        editor.MoveCaret({press.line - 1, editor.Caret().PreferredColumn()}, false, CaretStop::WholeCharacters);
    } else {
        editor.UpdateCaret(false);
    }
}

void ScrollDown(const KeyPress& press) {
    TextEditor& editor = press.editor;
    const uint32_t top = editor.TopLine();
    if (uint64_t(top) + press.Rows() >= editor.Text().LineCount()) return;
    editor.SetTopLine(top + 1);
    if (press.line == top) {
        editor.MoveCaret({press.line + 1, editor.Caret().PreferredColumn()}, false, CaretStop::WholeCharacters);
    } else {
        editor.UpdateCaret(false);
    }
}

void PageUp(const KeyPress& press) {
    const uint32_t rows = press.Rows();
    press.Move({press.line > rows ? press.line - rows : 0, press.editor.Caret().PreferredColumn()});
}

void PageDown(const KeyPress& press) {
    press.Move({press.line + press.Rows(), press.editor.Caret().PreferredColumn()});
}

void SmartHome(const KeyPress& press) {
    const uint32_t first = CaretStops::AtOrBefore(press.text, Words::FirstNonBlank(press.text));
    press.Move({press.line, press.column == first ? 0 : first});
}

void DocumentStart(const KeyPress& press) { press.Move({0, 0}); }

void LineEnd(const KeyPress& press) { press.Move({press.line, press.text.length}); }

void DocumentEnd(const KeyPress& press) {
    const uint32_t last = press.editor.Text().LineCount() - 1;
    press.Move({last, press.editor.Text().Line(last).length});
}

void Escape(const KeyPress& press) { press.Move({press.line, press.column}); }

void Insert(const KeyPress& press) {
    if (press.shift) return EditorClipboard::Paste(press.editor);
    press.editor.ToggleOverwrite();
}

void Delete(const KeyPress& press) {
    if (press.shift) return EditorClipboard::Cut(press.editor);
    EditorTyping::DeleteForward(press.editor, false);
}

void CtrlF2(const KeyPress& press) {
    if (press.shift) return press.editor.GetTextBuffer()->ClearBookmarks();
    press.editor.ToggleBookmark(NoLine);
}

void CaretLineToTop(const KeyPress& press) {
    press.editor.SetTopLine(press.line);
    press.editor.UpdateCaret(false);
}

void GoToDialog(const KeyPress& press) {
    if (!press.shift) press.editor.Surface().ShowGoToDialog();
}

template <ViewCommand Command> void Execute(const KeyPress& press) {
    EditorCommands::Rows.Execute(press.editor, Command);
}

constexpr KeyBinding<KeyPress> Bindings[] = {
    {ViewKey::Left, CtrlKey::Up, Left},
    {ViewKey::Left, CtrlKey::Down, WordLeft},
    {ViewKey::Right, CtrlKey::Up, Right},
    {ViewKey::Right, CtrlKey::Down, WordRight},
    {ViewKey::Up, CtrlKey::Up, Up},
    {ViewKey::Up, CtrlKey::Down, ScrollUp},
    {ViewKey::Down, CtrlKey::Up, Down},
    {ViewKey::Down, CtrlKey::Down, ScrollDown},
    {ViewKey::PageUp, CtrlKey::Either, PageUp},
    {ViewKey::PageDown, CtrlKey::Either, PageDown},
    {ViewKey::Home, CtrlKey::Up, SmartHome},
    {ViewKey::Home, CtrlKey::Down, DocumentStart},
    {ViewKey::End, CtrlKey::Up, LineEnd},
    {ViewKey::End, CtrlKey::Down, DocumentEnd},
    {ViewKey::Escape, CtrlKey::Either, Escape},
    {ViewKey::Insert, CtrlKey::Up, Insert},
    {ViewKey::Insert, CtrlKey::Down, [](const KeyPress& press) { EditorClipboard::Copy(press.editor); }},
    {ViewKey::Delete, CtrlKey::Up, Delete},
    {ViewKey::Delete, CtrlKey::Down, [](const KeyPress& press) { EditorTyping::DeleteForward(press.editor, true); }},
    {ViewKey::Backspace, CtrlKey::Up, [](const KeyPress& press) { EditorTyping::DeleteBack(press.editor, false); }},
    {ViewKey::Backspace, CtrlKey::Down, [](const KeyPress& press) { EditorTyping::DeleteBack(press.editor, true); }},
    {ViewKey::F2, CtrlKey::Up,
     [](const KeyPress& press) { EditorNavigation::GoToBookmark(press.editor, press.shift); }},
    {ViewKey::F2, CtrlKey::Down, CtrlF2},
    {ViewKey::F3, CtrlKey::Up, [](const KeyPress& press) { EditorFind::FindNext(press.editor, press.shift); }},
    {ViewKey::F3, CtrlKey::Down, [](const KeyPress& press) { EditorFind::QuickSearch(press.editor, press.shift); }},
    {u'A', CtrlKey::Down, Execute<ViewCommand::SelectAll>},
    {u'C', CtrlKey::Down, Execute<ViewCommand::Copy>},
    {u'F', CtrlKey::Down, Execute<ViewCommand::Find>},
    {u'G', CtrlKey::Down, GoToDialog},
    {u'H', CtrlKey::Down, Execute<ViewCommand::Replace>},
    {u'T', CtrlKey::Down, CaretLineToTop},
    {u'V', CtrlKey::Down, Execute<ViewCommand::Paste>},
    {u'W', CtrlKey::Down, [](const KeyPress& press) { EditorNavigation::SelectWord(press.editor, true); }},
    {u'X', CtrlKey::Down, Execute<ViewCommand::Cut>},
    {u'Y', CtrlKey::Down, DoInDocument<DocumentCommand::Redo>},
    {u'Z', CtrlKey::Down, DoInDocument<DocumentCommand::Undo>},
    {ViewKey::CloseBracket, CtrlKey::Down,
     [](const KeyPress& press) { EditorNavigation::GoToPartner(press.editor, press.shift); }},
};

} // namespace

void EditorKeys::Press(TextEditor& editor, uint32_t key) {
    const auto handle = HandlerOf(Bindings, editor.Surface(), key);
    if (!handle) return;
    const TextPosition caret = editor.Caret().Position();
    handle({editor, editor.Surface().IsShiftDown(), caret.line, caret.column, editor.Text().Line(caret.line)});
}
