#include "document/win32/WindowPollTimer.h"

#include "base/Array.h"
#include "base/win32/Windows.h"
#include "document/PollTimer.h"
#include "document/TextBuffer.h"

namespace {

// The documents whose timers are set on the owner. A tick that was queued before its timer was stopped still
// comes, when the document may be gone.
class TimedDocuments {
public:
    void SetOwner(HWND window) { owner = window; }
    bool Holds(const TextBuffer* document) const { return IndexOf(document) < documents.Count(); }
    bool Set(TextBuffer& document, uint32_t milliseconds, TIMERPROC tick);
    void Stop(TextBuffer& document);

private:
    size_t IndexOf(const TextBuffer* document) const;

    HWND owner = nullptr;
    Array<const TextBuffer*> documents;
};

// Of the whole process: a tick brings nothing along but a window and a number.
TimedDocuments timed;

size_t TimedDocuments::IndexOf(const TextBuffer* document) const {
    size_t index = 0;
    while (index < documents.Count() && documents[index] != document) ++index;
    return index;
}

bool TimedDocuments::Set(TextBuffer& document, uint32_t milliseconds, TIMERPROC tick) {
    const bool isNew = !Holds(&document);
    if (!owner || (isNew && !documents.Append(&document))) return false;
    // The timer is known by its document, so that setting it again replaces it; the old one goes on when
    // that fails.
    if (SetTimer(owner, reinterpret_cast<UINT_PTR>(&document), milliseconds, tick)) return true;
    if (isNew) documents.RemoveLast();
    return false;
}

void TimedDocuments::Stop(TextBuffer& document) {
    KillTimer(owner, reinterpret_cast<UINT_PTR>(&document));
    const size_t index = IndexOf(&document);
    if (index == documents.Count()) return;
    documents[index] = documents.Last();
    documents.RemoveLast();
}

void CALLBACK OnTick(HWND, UINT, UINT_PTR identifier, DWORD) {
    auto* const document = reinterpret_cast<TextBuffer*>(identifier);
    if (timed.Holds(document)) document->PollOutput();
}

bool Set(TextBuffer& document, uint32_t milliseconds) { return timed.Set(document, milliseconds, OnTick); }

void Stop(TextBuffer& document) { timed.Stop(document); }

constexpr PollTimer WindowTimer = {Set, Stop};

} // namespace

const PollTimer& PollOnWindow(NativeWindow window) {
    timed.SetOwner(static_cast<HWND>(window));
    return WindowTimer;
}
