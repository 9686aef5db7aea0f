#include "document/OutputCollector.h"

#include "base/CodePage.h"
#include "base/Heap.h"
#include "base/Platform.h"
#include "base/Scan.h"
#include "base/ScanBreaks.h"
#include "base/Text.h"
#include "document/CommandProcess.h"
#include "settings/AdditionalSettings.h"

#include <algorithm>

namespace {

constexpr uint32_t PollPeriod = 250; // milliseconds
constexpr uint32_t ReadBufferSize = 8192;
constexpr uint32_t ReadSize = ReadBufferSize - 1;
// A poll that has more to read than can be taken in this time goes on after the messages that wait.
constexpr uint32_t SliceTime = 30; // milliseconds
constexpr uint32_t SlicePause = 1;
constexpr uint32_t MaxFailedEnds = 20;

// Takes out what is not shown and returns how many bytes are left; they end at the first zero.
uint32_t Shown(uint8_t* bytes, uint32_t count) {
    return static_cast<uint32_t>(Scan::DropReturns(bytes, Scan::FindZeroByte(bytes, count)));
}

// No byte becomes more than one character, so that `out` takes them. False when the code page cannot convert
// them.
bool ConvertOutput(CodePage page, const uint8_t* bytes, uint32_t count, Char* out, uint32_t& written) {
    const size_t plain = Scan::WidenAscii(bytes, count, out);
    size_t others = 0;
    if (plain < count) {
        others = ToUtf16(page, bytes + plain, count - plain, out + plain, count - plain);
        if (others == 0) return false;
    }
    written = static_cast<uint32_t>(plain + others);
    return true;
}

} // namespace

bool OutputCollector::Open() {
    wantedPeriod = PollPeriod;
    run.failure.Clear();
    // One run is of one page, whatever is set meanwhile: a character may lie in two polls.
    run.page = FindCodePage(additionalSettings.OutputCodePage);
    run.readBuffer = Heap::AllocateArray<uint8_t>(ReadBufferSize);
    if (!run.readBuffer || !CommandProcess::OpenOutput(run)) return false;
    // The file itself takes no room; the command would just be unable to print.
    if (!Platform::FileCallShouldFail() && HasRoom()) return true;
    static_cast<void>(run.failure.Assign(CommandProcess::Failure::NoRoom)); // without memory there is no message
    return false;
}

bool OutputCollector::Start(const Char* command, const Char* directory) {
    return run.startDir.Assign(directory) && CommandProcess::Start(run, command);
}

const Char* OutputCollector::Failure() const {
    return run.failure.IsEmpty() ? u"There is not enough memory." : run.failure.Text();
}

bool OutputCollector::Poll() {
    const uint64_t before = run.consumed;
    const Appending result = AppendNew();
    run.hasEnded = run.hasEnded || CommandProcess::HasEnded(run);
    // Only a slice that finds next to nothing new has caught up; ending the run before that would lose output.
    const bool hasMore = run.pollTimer == SlicePause && run.consumed > before + ReadSize;
    const bool readsOn = result == Appending::OutOfTime || hasMore;
    wantedPeriod = readsOn ? SlicePause : PollPeriod;
    // What comes between the look at the size and the process's end is not read any more.
    if (!run.hasEnded || readsOn) return false;
    // Nothing is lost to a failure that passes; one that lasts does not keep the run for ever.
    if (result == Appending::Failed && ++run.failedEnds < MaxFailedEnds) return false;
    // The rest of a truncated character will never arrive.
    // Nobody could do anything about its failing.
    if (run.size - run.consumed < MaxCharacterBytes) static_cast<void>(AppendFromFile(run.size - run.consumed, true));
    if (!HasRoom()) AppendNote(u"The disk is full: output of the command may be missing.\n");
    return true;
}

OutputCollector::Appending OutputCollector::AppendNew() {
    if (!run.sizeIsFinal) {
        if (!CommandProcess::OutputSize(run, run.size)) return Appending::Failed;
        // What children of an ended process go on printing might never come to an end.
        run.sizeIsFinal = run.hasEnded;
    }
    run.consumed = std::min(run.consumed, run.size); // the command may have emptied its file
    return AppendFromFile(run.size - run.consumed, false);
}

OutputCollector::Appending OutputCollector::AppendFromFile(uint64_t count, bool isRest) {
    const uint64_t deadline = Platform::Ticks() + SliceTime;
    auto result = Appending::Done;
    while (count > 0 && result == Appending::Done) {
        const uint64_t before = run.consumed;
        const bool sound = AppendChunk(static_cast<uint32_t>(std::min<uint64_t>(count, ReadSize)), isRest);
        count -= run.consumed - before;
        if (!sound) result = Appending::Failed;
        if (run.consumed == before) break;
        if (count >= MaxCharacterBytes && Platform::Ticks() >= deadline) result = Appending::OutOfTime;
    }
    return result;
}

// Appends the next bytes of the file. Only whole characters count as consumed unless `isRest`, and none
// at all when there is no memory for them, so that the next poll reads them again.
bool OutputCollector::AppendChunk(uint32_t count, bool isRest) {
    uint32_t read = 0;
    if (!CommandProcess::ReadOutput(run, run.consumed, run.readBuffer, count, read)) return false;
    if (!isRest) read = static_cast<uint32_t>(WholeCharacters(run.page, run.readBuffer, read));
    const uint32_t shown = Shown(run.readBuffer, read);
    if (!store.EnsureCapacity(uint64_t{store.Length()} + shown)) return false;
    run.consumed += read;
    Char* end = store.Data() + store.Length();
    uint32_t written = 0;
    const bool converted = ConvertOutput(run.page, run.readBuffer, shown, end, written);
    store.Appended({written, static_cast<uint32_t>(Scan::CountLineFeeds(end, written))});
    return converted;
}

// On a line of its own. Without memory there is no message.
void OutputCollector::AppendNote(const Char* note) {
    const uint32_t count = Text::Length(note);
    if (!store.EnsureCapacity(uint64_t{store.Length()} + count + 1)) return;
    Char* end = store.Data() + store.Length();
    const bool inLine = store.Length() > 0 && end[-1] != u'\n';
    if (inLine) *end++ = u'\n';
    std::copy_n(note, count, end);
    store.Appended({count + inLine, 1u + inLine});
}

void OutputCollector::AskToClose() {
    if (!run.process) return;
    CommandProcess::AskToClose(run);
    run.wasAskedToClose = true;
}

void OutputCollector::EndAll() const {
    if (run.process) CommandProcess::EndAll(run);
}

bool OutputCollector::SetTimer(PollTimer* timer, TextBuffer& document) {
    if (run.pollTimer == wantedPeriod) return true;
    if (!timer || !timer->Set(document, wantedPeriod)) return false;
    run.pollTimer = wantedPeriod;
    return true;
}

void OutputCollector::Close() {
    CommandProcess::Close(run);
    Heap::Free(run.readBuffer);
    run.readBuffer = nullptr;
    run.consumed = run.size = 0;
    run.hasEnded = run.sizeIsFinal = run.wasAskedToClose = false;
    run.failedEnds = 0;
    run.pollTimer = 0;
}
