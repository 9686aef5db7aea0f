// Reads the bytes as a copy that a save has left, as they are and after a header that fits them, and as the next start
// does: nothing but a complete copy is taken for one.

#include "base/Platform.h"
#include "base/SaveCopy.h"
#include "base/SaveRecovery.h"
#include "support/ScratchFolder.h"
#include "support/TestRecovery.h"

#include <cstdlib>
#include <string>

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

SaveCopyState StateOf(const std::u16string& path, SaveCopyContent& content) {
    Platform::File file;
    Require(file.Open(path.c_str(), Platform::File::Mode::Alone));
    return ReadSaveCopy(file, content);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ScratchFolder scratch;
    static const std::u16string folder = scratch.Path("Recovery");
    Platform::SetRecoveryFolder(folder.c_str());
    std::filesystem::remove_all(scratch.File("Recovery"));
    std::filesystem::create_directories(scratch.File("Recovery/Copies"));

    const std::string bytes(data, data + size);
    const std::u16string copy = scratch.Write("Recovery/Copies/1.save", bytes);
    SaveCopyContent content;
    const SaveCopyState state = StateOf(copy, content);
    if (state == SaveCopyState::Complete) Require(content.start <= size && content.length == size - content.start);
    SaveRecovery recovery;
    recovery.Look(recoveryServices.folder);
    Require(recovery.IsEmpty() || state == SaveCopyState::Complete);
    Require(state != SaveCopyState::Damaged || !std::filesystem::exists(scratch.File("Recovery/Copies/1.save")));
    recovery.Forget();

    SaveCopy made;
    BlockSource source(data, size);
    Require(made.Make(recoveryServices.folder, u"C:\\file.txt", source) == SaveCopy::Outcome::Made);
    made.Discard();
    return 0;
}
