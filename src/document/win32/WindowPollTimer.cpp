#include "document/win32/WindowPollTimer.h"

#include "document/TextBuffer.h"

namespace {

// A timer is known by its document, so that setting it again replaces it.
UINT_PTR NumberOf(const TextBuffer* document) { return reinterpret_cast<UINT_PTR>(document); }

} // namespace

size_t WindowPollTimer::IndexOf(UINT_PTR number) const {
    size_t index = 0;
    while (index < documents.Count() && NumberOf(documents[index]) != number) ++index;
    return index;
}

bool WindowPollTimer::Set(TextBuffer& document, uint32_t milliseconds) {
    const bool isNew = IndexOf(NumberOf(&document)) == documents.Count();
    if (!owner || (isNew && !documents.Append(&document))) return false;
    // The old one goes on when this fails.
    if (SetTimer(owner, NumberOf(&document), milliseconds, nullptr)) return true;
    if (isNew) documents.RemoveLast();
    return false;
}

void WindowPollTimer::Stop(TextBuffer& document) {
    const size_t index = IndexOf(NumberOf(&document));
    if (index == documents.Count()) return;
    KillTimer(owner, NumberOf(&document));
    documents[index] = documents.Last();
    documents.RemoveLast();
}

void WindowPollTimer::Tick(UINT_PTR number) {
    const size_t index = IndexOf(number);
    if (index < documents.Count()) documents[index]->PollOutput();
}
