#include "base/SafeSaver.h"

#include "base/FileBytes.h"
#include "base/Path.h"
#include "base/PreviousFile.h"
#include "base/Text.h"

namespace {

// Not CompareNames, for which names of two files may be equal: the copy may be all that is left of its text.
bool IsSameTarget(const Char* left, const Char* right) {
    return Text::Equal(left, right) || Platform::IsSameFile(left, right);
}

// Opens the file with room for its new bytes. It holds its old ones still; one that was made for them is removed again
// when they have no room, or `isTouched` says that it could not be.
bool OpenWithRoom(Platform::File& file, const Char* target, uint64_t length, bool& isTouched) {
    // Only an attempt to make it says for certain that there was none: asking may fail for other reasons.
    const bool isNew = file.Open(target, Platform::File::Mode::CreateNew);
    if (!isNew && !file.Open(target, Platform::File::Mode::Overwrite)) return false;
    if (file.Reserve(length)) return true;
    file.Close();
    isTouched = isNew && !Platform::RemoveFile(target);
    return false;
}

// False for a device, which is not even opened: that may start it.
bool FindTarget(const Char* name, WString& target) {
    return Platform::FullPath(name, target) && !Path::IsDevice(target.Text());
}

// Cut also after a failure: what follows are old bytes in a place that is not theirs.
bool WriteInPlace(Platform::File& file, ByteSource& source) {
    FileSink sink(file);
    const bool isGiven = source.GiveTo(sink);
    const bool isCut = file.CutHere();
    const bool isFlushed = file.Flush();
    file.Close();
    return isGiven && isCut && isFlushed;
}

} // namespace

SafeSaver::~SafeSaver() {
    while (SaveCopy* const copy = copies.TakeHead()) delete copy;
}

bool SafeSaver::SaveWithCopy(SaveCopy& copy, ByteSource& source, Replaced replaced, bool& isTouched) {
    const Char* const target = copy.Target().Text();
    if (replaced == Replaced::Kept) KeepPreviousFile(folder, target, copy.Length(), copy.Value());
    Platform::File file;
    if (!OpenWithRoom(file, target, copy.Length(), isTouched)) return false;
    isTouched = true;
    return WriteInPlace(file, source);
}

SaveResult SafeSaver::Save(const Char* name, ByteSource& source, Replaced replaced) {
    WString target;
    auto* const copy = new SaveCopy;
    if (!copy || !FindTarget(name, target) || copy->Make(folder, target.Text(), source) == SaveCopy::Outcome::NoBytes) {
        delete copy;
        return SaveResult::Untouched;
    }
    bool isTouched = false;
    const bool isSaved = SaveWithCopy(*copy, source, replaced, isTouched);
    if (isSaved) DiscardCopies(target.Text());
    if (!isSaved && isTouched && copy->IsMade()) {
        copies.Append(copy);
        return SaveResult::Cut;
    }
    copy->Discard();
    delete copy;
    if (isSaved) return SaveResult::Saved;
    return isTouched ? SaveResult::Cut : SaveResult::Untouched;
}

void SafeSaver::DiscardCopies(const Char* target) {
    for (SaveCopy* copy = copies.head; copy;) {
        SaveCopy* const following = copy->next;
        if (IsSameTarget(copy->Target().Text(), target)) {
            copies.Remove(copy);
            copy->Discard();
            delete copy;
        }
        copy = following;
    }
}
