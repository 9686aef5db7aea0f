#include "base/PreviousFile.h"

#include "base/Checksum.h"
#include "base/FileBytes.h"
#include "base/Path.h"
#include "base/Text.h"
#include "base/TextFormat.h"

namespace {

// The same for every spelling of the same path.
uint32_t NumberOf(const Char* path) {
    Checksum sum;
    for (; *path; ++path) {
        const Char folded = Text::FoldCase(*path);
        sum.Add(&folded, sizeof(folded));
    }
    return static_cast<uint32_t>(sum.Value());
}

// Closed at the end: an open file does not get another name.
bool WriteWhole(const Char* path, Platform::File& from) {
    Platform::File file;
    if (!from.Seek(0) || !file.Open(path, Platform::File::Mode::Create)) return false;
    FileSink sink(file);
    return PassOn(from, sink) && file.Flush();
}

bool HasBytes(Platform::File& file, uint64_t length, uint64_t value) {
    Checksum sum;
    return AddUp(file, sum) && sum.Count() == length && sum.Value() == value;
}

} // namespace

bool PreviousFilePath(RecoveryFolder& folder, const Char* target, WString& out) {
    WString name;
    return folder.Make(u"Previous", out) &&
           Text::AppendFormat(name, u"%08x %s", NumberOf(target), Path::FileName(target)) &&
           Path::Join(out, name.Text());
}

void KeepPreviousFile(RecoveryFolder& folder, const Char* target, uint64_t length, uint64_t value) {
    Platform::File old;
    if (!old.Open(target, Platform::File::Mode::ReadShared) || HasBytes(old, length, value)) return;
    WString path;
    WString fresh;
    if (!PreviousFilePath(folder, target, path) || !fresh.Assign(path) || !fresh.Append(u".new")) return;
    // What is kept already goes only once there is something whole in its place.
    if (!WriteWhole(fresh.Text(), old) || !Platform::MoveOver(fresh.Text(), path.Text()))
        static_cast<void>(Platform::RemoveFile(fresh.Text())); // the next one overwrites what stays
}
