#include "view/CaretBrackets.h"

#include "document/TextBuffer.h"
#include "view/ShownText.h"
#include "view/TextCaret.h"
#include "viewbase/EditorSurface.h"

void CaretBrackets::Match() {
    due = false;
    TextBuffer* document = text.Document();
    if (!document || !document->Engine() || !document->Content() || !surface.HasFocus()) return;
    // Perhaps another view's, which shows it as well.
    const BracketPair old = BracketMatch::Highlighted(text);
    const bool isAtBracket = BracketMatch::IsAtBracket(text, caret);
    // After nearly every key: there is nothing to be looked for and nothing to be taken back.
    if (!isAtBracket && old == BracketPair()) return;
    // The partner is looked for in the document's content, which has to be complete: beside a bracket each key is a
    // step of its own (docs/oddities.md).
    bool complete = true;
    if (isAtBracket && document->HasPendingEdit()) {
        complete = document->CommitEdit();
        // Committing has closed it. Without memory it is opened when it is typed in.
        if (complete) static_cast<void>(document->LoadEditLine(caret.Line()));
    }
    if (complete) {
        BracketMatch::Update(text, caret);
    } else {
        BracketMatch::Clear(text);
    }
    const BracketPair now = BracketMatch::Highlighted(text);
    if (now == old) return;
    Repaint(old);
    Repaint(now);
}

void CaretBrackets::MatchIfDue() {
    if (!due) return;
    const DocumentView* active = text.Document()->ActiveView();
    if (active && active->HasFocus()) return Match();
    due = false;
    // Nobody's caret says which brackets to mark.
    const BracketPair old = BracketMatch::Highlighted(text);
    if (old != BracketPair()) BracketMatch::Clear(text);
    Repaint(old);
}

void CaretBrackets::Repaint(const BracketPair& pair) const {
    if (pair == BracketPair()) return;
    text.Document()->RepaintLines({pair.bracket.line, pair.bracket.line});
    text.Document()->RepaintLines({pair.partner.line, pair.partner.line});
}
