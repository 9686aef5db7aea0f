#pragma once

#include "view/BracketMatch.h"

class EditorSurface;

// Keeps the pair of brackets at the caret of a view highlighted while the view has the focus, and has it repainted in
// all views of the document.
class CaretBrackets {
public:
    // All three outlive it.
    CaretBrackets(const EditorSurface& window, const ShownText& shown, const TextCaret& shownCaret)
        : surface(window), text(shown), caret(shownCaret) {}
    CaretBrackets(const CaretBrackets&) = delete;
    CaretBrackets& operator=(const CaretBrackets&) = delete;

    // With the focus: highlights the pair at the caret, committing a pending edit if there may be one.
    void Match();
    // The document has placed the caret, or what is around it may be new: MatchIfDue is to look.
    void SetDue() { due = true; }
    // Once an operation is over: matches when that is due, or highlights nothing when no view of the document has the
    // focus. There is a document.
    void MatchIfDue();

private:
    void Repaint(const BracketPair& pair) const;

    const EditorSurface& surface;
    const ShownText& text;
    const TextCaret& caret;
    bool due = false;
};
