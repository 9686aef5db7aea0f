#include "view/TextInput.h"

#include "base/Surrogates.h"
#include "settings/AdditionalSettings.h"
#include "view/EditorKeys.h"
#include "view/EditorNavigation.h"

#include <algorithm>
#include <utility>

void TextInput::OnKeyDown(uint32_t key) {
    const TextBuffer* document = editor.GetTextBuffer();
    if (!document) return;
    // Another view may have had its own line opened, or memory was short when this one was due.
    if (document->EditLineNumber() != editor.CaretLine()) editor.OpenCaretLine();
    EditorKeys::Press(editor, key);
}

void TextInput::TypeUnit(Char character, TypedBy source) {
    if (!editor.GetTextBuffer()) return;
    // The system sends the halves of a pair one by one. With WholeCharacters the first waits for the second, so that
    // both are one step; before anything else it is typed alone.
    const Char first = std::exchange(firstHalf, Char{0});
    if (Surrogates::IsPair(first, character)) return EditorTyping::TypePair(editor, first, character, source);
    if (first) EditorTyping::Type(editor, first, source);
    if (additionalSettings.WholeCharacters && Surrogates::IsFirst(character))
        firstHalf = character;
    else
        EditorTyping::Type(editor, character, source);
}

void TextInput::OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) {
    if (axis == ScrollAxis::Vertical) return InputBase::OnScroll(axis, request, trackPosition);
    TextViewport& viewport = editor.Viewport();
    const int32_t step = editor.Surface().Metrics().averageWidth;
    const uint64_t pixels = viewport.ScrolledSideways().After(request, step, trackPosition);
    viewport.SetHorizontalScroll(static_cast<int64_t>(pixels));
    editor.UpdateCaret(false);
}

// Never against its direction: keys lead further than the bar.
void TextInput::OnSidewaysWheel(int32_t delta, int32_t columnsPerNotch) {
    TextViewport& viewport = editor.Viewport();
    const int64_t columns = std::min(columnsPerNotch, std::max(viewport.VisibleColumns(), 1));
    const int64_t distance = sidewaysWheel.TakeNotches(delta) * columns * editor.Surface().Metrics().averageWidth;
    if (distance == 0 || !editor.GetTextBuffer()) return;
    const int64_t position = viewport.HorizontalScroll();
    const auto farthest = static_cast<int64_t>(viewport.ScrolledSideways().Farthest());
    viewport.SetHorizontalScroll(std::min(position + distance, std::max(position, farthest)));
    editor.UpdateCaret(false);
}

bool TextInput::BeginSelection(ClientPoint point, bool extend) {
    // Without memory the line stays open, which selecting does not mind.
    if (TextBuffer* document = editor.GetTextBuffer()) static_cast<void>(document->CommitEdit());
    return InputBase::BeginSelection(point, extend);
}

void TextInput::ExtendSelection(ClientPoint point) {
    const TextPosition place = editor.PlaceAt(point);
    if (place != editor.Caret().Position()) editor.MoveCaret(place, true);
}

void TextInput::OnDoubleClick() {
    const TextBuffer* document = editor.GetTextBuffer();
    if (!document) return;
    if (document->IsOutput()) {
        EditorNavigation::OpenNamedFile(editor);
    } else {
        EditorNavigation::SelectWord(editor, false);
    }
}

// Sideways as well, which a typed character sees to only after it was typed.
void TextInput::OnComposition() {
    const TextBuffer* document = editor.GetTextBuffer();
    if (document && !document->IsReadOnly()) editor.UpdateCaret(true);
}
