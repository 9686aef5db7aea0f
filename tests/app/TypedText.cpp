#include "app/TypedText.h"

#include <algorithm>

bool TypedText::RemoveSelection() {
    if (caret == anchor) return false;
    const size_t start = std::min(caret, anchor);
    text.erase(start, std::max(caret, anchor) - start);
    Place(start);
    return true;
}

void TypedText::Type(wchar_t unit) {
    RemoveSelection();
    text.insert(caret, 1, unit);
    Place(caret + 1);
}

void TypedText::Backspace() {
    if (RemoveSelection() || caret == 0) return;
    text.erase(caret - 1, 1);
    Place(caret - 1);
}

void TypedText::Delete() {
    if (!RemoveSelection() && caret < text.size()) text.erase(caret, 1);
}

void TypedText::End(bool shift) {
    const size_t end = text.find(L'\n', caret);
    Move(end == std::wstring::npos ? text.size() : end, shift);
}
