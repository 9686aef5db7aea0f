#include "document/win32/WindowPollTimer.h"

#include "base/Array.h"
#include "base/win32/Windows.h"
#include "document/PollTimer.h"
#include "document/TextBuffer.h"

namespace {

HWND owner = nullptr;

// The documents whose timers are set. A tick that was queued before its timer was stopped still comes,
// when the document may be gone.
Array<const TextBuffer*> timed;

size_t IndexOf(const TextBuffer* document) {
    size_t index = 0;
    while (index < timed.Count() && timed[index] != document) ++index;
    return index;
}

void CALLBACK OnTick(HWND, UINT, UINT_PTR identifier, DWORD) {
    auto* const document = reinterpret_cast<TextBuffer*>(identifier);
    if (IndexOf(document) < timed.Count()) document->PollOutput();
}

void Stop(TextBuffer& document) {
    KillTimer(owner, reinterpret_cast<UINT_PTR>(&document));
    const size_t index = IndexOf(&document);
    if (index == timed.Count()) return;
    timed[index] = timed.Last();
    timed.RemoveLast();
}

bool Set(TextBuffer& document, uint32_t milliseconds) {
    const bool isNew = IndexOf(&document) == timed.Count();
    if (!owner || (isNew && !timed.Append(&document))) return false;
    // The timer is known by its document, so that setting it again replaces it; the old one goes on when
    // that fails.
    if (SetTimer(owner, reinterpret_cast<UINT_PTR>(&document), milliseconds, OnTick)) return true;
    if (isNew) timed.RemoveLast();
    return false;
}

constexpr PollTimer WindowTimer = {Set, Stop};

} // namespace

void PollOnWindow(NativeWindow window) {
    owner = static_cast<HWND>(window);
    SetPollTimer(WindowTimer);
}
