#include "base/SaveRecovery.h"

#include "base/Checksum.h"
#include "base/FileBytes.h"
#include "base/Path.h"
#include "base/RecoveryFile.h"
#include "base/SaveCopy.h"
#include "base/Text.h"
#include "base/TextFormat.h"

namespace {

constexpr uint32_t MaxNames = 100;

// Not asked of another machine, which may keep a start waiting: a path in a copy may name any.
bool HasContent(const SaveCopyContent& content) {
    Platform::File file;
    Checksum sum;
    return !Platform::IsRemote(content.target.Text()) &&
           file.Open(content.target.Text(), Platform::File::Mode::ReadShared) && AddUp(file, sum) &&
           sum.Count() == content.length && sum.Value() == content.value;
}

// Makes a new file in the recovery folder that is called like the one that was saved, with a number when there is one.
bool MakeNamed(RecoveryFolder& folder, const Char* target, Platform::File& file, WString& path) {
    const Char* const wanted = Path::FileName(target);
    for (uint32_t number = 1; number <= MaxNames; ++number) {
        WString name;
        const bool isNamed = number == 1 ? name.Assign(wanted) : Text::AppendFormat(name, u"%u %s", number, wanted);
        if (!isNamed || !folder.Make(u"", path) || !Path::Join(path, name.Text())) return false;
        if (file.Open(path.Text(), Platform::File::Mode::CreateNew)) return true;
    }
    return false;
}

// `path` becomes that of a new file with the bytes of the copy. Without one it stays as it is, and nothing is left.
void PutIntoFile(RecoveryFolder& folder, Platform::File& copy, const SaveCopyContent& content, WString& path) {
    Platform::File file;
    WString made;
    if (!copy.Seek(content.start) || !MakeNamed(folder, content.target.Text(), file, made)) return;
    FileSink sink(file);
    const bool isWritten = PassOn(copy, sink) && file.Flush();
    file.Close();
    // The user is not told of a file that cannot be removed: it is less than the copy.
    if (!isWritten || !path.Assign(made)) static_cast<void>(Platform::RemoveFile(made.Text()));
}

} // namespace

SaveRecovery::~SaveRecovery() {
    while (Found* const node = found.TakeHead()) delete node;
}

void SaveRecovery::Look(RecoveryFolder& folder) {
    List<RecoveryFileName> names;
    ListRecoveryFiles(folder, SaveCopyFolder, SaveCopyExtension, names);
    while (RecoveryFileName* const name = names.TakeHead()) {
        if (foundCount < MaxFound) LookAt(folder, name->path.Text());
        delete name;
    }
}

void SaveRecovery::LookAt(RecoveryFolder& folder, const Char* copy) {
    auto* const node = new Found;
    SaveCopyContent content;
    if (!node || !node->copy.Assign(copy) || !node->bytes.Assign(copy) ||
        !node->file.Open(copy, Platform::File::Mode::Alone)) {
        delete node;
        return;
    }
    const SaveCopyState state = ReadSaveCopy(node->file, content);
    const bool isWanted = state == SaveCopyState::Complete && !HasContent(content);
    if (isWanted && node->target.Assign(content.target)) {
        // Where that fails the user is told of the copy itself, which then stays (Forget).
        PutIntoFile(folder, node->file, content, node->bytes);
        found.Append(node);
        ++foundCount;
        return;
    }
    node->file.Close();
    // What cannot be read now is kept for a start that can.
    if (!isWanted && state != SaveCopyState::Unknown) static_cast<void>(Platform::RemoveFile(copy));
    delete node;
}

bool SaveRecovery::AppendMessage(WString& out) const {
    for (const Found* node = found.head; node; node = node->next) {
        const Char* const format = u"%s%s was not saved completely.\nIts new contents are in %s.";
        if (!Text::AppendFormat(out, format, node->previous ? u"\n" : u"", node->target.Text(), node->bytes.Text()))
            return false;
    }
    return true;
}

void SaveRecovery::Forget() {
    while (Found* const node = found.TakeHead()) {
        node->file.Close();
        // What stays is found again at the next start; here and below.
        if (!Text::Equal(node->copy.Text(), node->bytes.Text()))
            static_cast<void>(Platform::RemoveFile(node->copy.Text()));
        delete node;
    }
}
