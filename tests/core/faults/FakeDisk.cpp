#include "FakeDisk.h"

#include "base/Text.h"

#include "base/Path.h"
#include "base/SystemFolders.h"

#include <algorithm>

FakeDisk& FakeDisk::Get() {
    static FakeDisk disk;
    return disk;
}

void FakeDisk::Clear() { *this = FakeDisk(); }

void FakeDisk::FailAt(uint64_t number, Fault kind) {
    calls = 0;
    failAt = number;
    fault = kind;
    isStopped = false;
    hasFailed = false;
}

void FakeDisk::BringBackNames() {
    for (const auto& before : removed) {
        if (before.second)
            files[before.first] = before.second;
        else
            files.erase(before.first);
    }
}

void FakeDisk::Restart(Unflushed unflushed) {
    const bool wasCut = hasFailed && fault == Fault::PowerCut;
    hasFailed = false;
    failAt = 0;
    for (Handle& handle : handles) handle.content = nullptr;
    if (!wasCut) return;
    if (unflushed == Unflushed::Lost) BringBackNames();
    removed.clear();
    for (auto file = files.begin(); file != files.end();) {
        Content& content = *file->second;
        if (unflushed == Unflushed::Lost) content.bytes = content.flushed;
        if (unflushed == Unflushed::Zeros) {
            size_t first = content.bytes.size();
            size_t end = 0;
            for (size_t i = 0; i < content.bytes.size(); ++i) {
                if (i < content.kept && content.bytes[i] == content.flushed[i]) continue;
                first = std::min(first, i);
                end = i + 1;
            }
            for (size_t i = first; i < end; ++i) content.bytes[i] = '\0';
        }
        const bool isLost = unflushed == Unflushed::Lost && !content.isDurable;
        file = isLost ? files.erase(file) : std::next(file);
    }
}

void FakeDisk::Write(const std::u16string& path, const std::string& bytes) {
    files[path] = std::make_shared<Content>(Content{bytes, bytes, bytes.size(), true, Tick()});
}

std::string FakeDisk::Read(const std::u16string& path) const {
    const auto found = files.find(path);
    return found == files.end() ? "(missing)" : found->second->bytes;
}

std::vector<std::u16string> FakeDisk::FilesBeside(const std::set<std::u16string>& others) const {
    std::vector<std::u16string> names;
    for (const auto& file : files)
        if (!others.count(file.first)) names.push_back(file.first);
    return names;
}

bool FakeDisk::Holds(const std::u16string& path, const std::string& bytes) const {
    const std::string held = Read(path);
    return held.size() >= bytes.size() && held.compare(held.size() - bytes.size(), bytes.size(), bytes) == 0;
}

size_t FakeDisk::OpenFiles() const {
    return static_cast<size_t>(
        std::count_if(handles.begin(), handles.end(), [](const Handle& handle) { return handle.content != nullptr; }));
}

bool FakeDisk::Decide(Call call, const std::u16string& path) const {
    const bool isReached = failAt && calls >= failAt && !isStopped;
    const bool isThere = isReached && calls == failAt;
    switch (fault) {
    case Fault::Denied:
        return isThere;
    case Fault::InUse:
        return isThere && call == Call::Open;
    case Fault::ShortWrite:
        return isThere && (call == Call::Write || call == Call::GrowingWrite);
    case Fault::Shortened:
        return isThere && call == Call::Read;
    case Fault::Full:
        return isReached && (call == Call::GrowingWrite || call == Call::Reserve);
    case Fault::Gone:
        return isReached && path.rfind(Share, 0) == 0;
    case Fault::Killed:
    case Fault::PowerCut:
        return isReached;
    }
    return false;
}

bool FakeDisk::Fails(Call call, const std::u16string& path) {
    ++calls;
    const bool fails = Decide(call, path);
    tearsWrite = fails && fault == Fault::ShortWrite;
    cutsRead = fails && fault == Fault::Shortened;
    hasFailed = hasFailed || fails;
    return fails;
}

bool FakeDisk::MayOpen(const std::u16string& path, bool alone) const {
    return std::none_of(handles.begin(), handles.end(), [&](const Handle& handle) {
        return handle.content && handle.path == path && (alone || handle.isAlone);
    });
}

intptr_t FakeDisk::Open(const std::u16string& path, Platform::File::Mode mode) {
    using Mode = Platform::File::Mode;
    const bool makes = mode == Mode::Create || mode == Mode::Overwrite || mode == Mode::CreateNew;
    const bool isAlone = makes || mode == Mode::Alone;
    if (Fails(Call::Open, path) || IsFolder(path) || (mode != Mode::Attributes && !MayOpen(path, isAlone))) return -1;
    if (makes && !denied.empty() && path.rfind(denied, 0) == 0) return -1;
    if (Has(path) ? mode == Mode::CreateNew : !makes) return -1;
    std::shared_ptr<Content>& content = files[path];
    if (!content) {
        content = std::make_shared<Content>(Content{"", "", 0, false, Tick()});
        removed.erase(path);
    }
    if (mode == Mode::Create) content->Cut(0);
    handles.push_back({path, content, 0, isAlone});
    return static_cast<intptr_t>(handles.size() - 1);
}

bool FakeDisk::Remove(const std::u16string& path) {
    if (Fails(Call::Other, path) || !Has(path) || !MayOpen(path, true)) return false;
    removed[path] = files[path];
    files.erase(path);
    return true;
}

bool FakeDisk::Move(const std::u16string& from, const std::u16string& to) {
    if (Fails(Call::Other, from) || !Has(from) || !MayOpen(from, true) || !MayOpen(to, true)) return false;
    removed[to] = Has(to) ? files[to] : nullptr;
    files[to] = removed[from] = files[from];
    files.erase(from);
    return true;
}

bool FakeDisk::MakeFolder(const std::u16string& path) {
    if (Fails(Call::Reserve, path) || (!denied.empty() && path.rfind(denied, 0) == 0)) return false;
    return folders.insert(path).second;
}

std::vector<std::u16string> FakeDisk::Names(const std::u16string& folder, const std::u16string& ending) const {
    std::vector<std::u16string> names;
    for (const auto& file : files) {
        const std::u16string& path = file.first;
        const size_t length = folder.size() + ending.size();
        if (path.size() < length || path.rfind(folder, 0) != 0) continue;
        if (path.find(u'\\', folder.size()) != std::u16string::npos) continue;
        if (path.compare(path.size() - ending.size(), ending.size(), ending) == 0)
            names.push_back(path.substr(folder.size()));
    }
    return names;
}

// The seam.

using Call = FakeDisk::Call;

bool Platform::File::Open(const Char* name, Mode mode) {
    Close();
    handle = FakeDisk::Get().Open(name, mode);
    return IsOpen();
}

void Platform::File::Close() {
    if (IsOpen()) FakeDisk::Get().Close(handle);
    handle = -1;
}

// What most calls begin with: the open file, or null when the call fails.
static FakeDisk::Handle* Begin(intptr_t handle, Call call) {
    FakeDisk& disk = FakeDisk::Get();
    if (handle == -1 || !disk.At(handle).content) return nullptr;
    return disk.Fails(call, disk.At(handle).path) ? nullptr : &disk.At(handle);
}

bool Platform::File::GetSize(uint64_t& size) {
    const FakeDisk::Handle* const file = Begin(handle, Call::Other);
    if (file) size = file->content->bytes.size();
    return file != nullptr;
}

bool Platform::File::GetTime(FileTime& time) {
    const FakeDisk::Handle* const file = Begin(handle, Call::Other);
    if (file) time = file->content->time;
    return file != nullptr;
}

// This disk tells upper from lower case.
bool Platform::IsSameFile(const Char* left, const Char* right) { return Text::Equal(left, right); }
bool Platform::File::IsDeleted() const { return false; }
bool Platform::File::IsAt(const Char*) const { return true; }

bool Platform::File::Seek(uint64_t offset) {
    FakeDisk::Handle* const file = Begin(handle, Call::Other);
    if (file) file->position = offset;
    return file != nullptr;
}

bool Platform::File::Read(void* out, size_t count, size_t& read) {
    read = 0;
    FakeDisk& disk = FakeDisk::Get();
    FakeDisk::Handle* file = Begin(handle, Call::Read);
    if (!file && disk.CutsRead()) {
        file = &disk.At(handle);
        file->content->Cut(std::min(file->content->bytes.size(), static_cast<size_t>(file->position) + count / 2));
    }
    if (!file) return false;
    const std::string& bytes = file->content->bytes;
    const size_t at = std::min(static_cast<size_t>(file->position), bytes.size());
    read = std::min(count, bytes.size() - at);
    std::copy_n(bytes.data() + at, read, static_cast<char*>(out));
    file->position = at + read;
    return true;
}

bool Platform::File::ReadAt(uint64_t offset, void* out, size_t count, size_t& read) {
    read = 0;
    return Seek(offset) && Read(out, count, read);
}

bool Platform::File::Write(const void* data, size_t count) {
    FakeDisk& disk = FakeDisk::Get();
    FakeDisk::Handle& file = disk.At(handle);
    if (!file.content) return false;
    const size_t at = static_cast<size_t>(file.position);
    std::string& bytes = file.content->bytes;
    const bool grows = at + count > bytes.size();
    const bool fails = disk.Fails(grows ? Call::GrowingWrite : Call::Write, file.path);
    if (fails && !disk.TearsWrite()) return false;
    const size_t written = fails ? count / 2 : count;
    if (at + written > bytes.size()) bytes.resize(at + written);
    std::copy_n(static_cast<const char*>(data), written, bytes.begin() + static_cast<std::ptrdiff_t>(at));
    file.position += written;
    file.content->time = disk.Tick();
    return !fails;
}

bool Platform::File::Flush() {
    FakeDisk::Handle* const file = Begin(handle, Call::Other);
    if (!file) return false;
    file->content->flushed = file->content->bytes;
    file->content->kept = file->content->bytes.size();
    file->content->isDurable = true;
    return true;
}

bool Platform::File::Reserve(uint64_t length) {
    FakeDisk& disk = FakeDisk::Get();
    FakeDisk::Handle& file = disk.At(handle);
    const bool grows = length > file.content->bytes.size();
    return !disk.Fails(grows ? Call::Reserve : Call::Other, file.path);
}

bool Platform::File::CutHere() {
    FakeDisk::Handle* const file = Begin(handle, Call::Other);
    if (file) file->content->Cut(static_cast<size_t>(file->position));
    return file != nullptr;
}

Platform::Entry Platform::EntryKind(const Char* path) {
    FakeDisk& disk = FakeDisk::Get();
    if (disk.Fails(Call::Other, path)) return Entry::Unknown;
    if (disk.IsFolder(path)) return Entry::Directory;
    return disk.Has(path) ? Entry::File : Entry::Missing;
}

bool Platform::RemoveFile(const Char* path) { return FakeDisk::Get().Remove(path); }
bool Platform::MoveOver(const Char* from, const Char* to) { return FakeDisk::Get().Move(from, to); }

// Drives are of this machine, whatever they are called.
bool Platform::IsRemote(const Char* path) { return path[0] == u'\\' && path[1] == u'\\'; }

bool SystemFolders::Make(const Char* path) { return FakeDisk::Get().MakeFolder(path); }

// The state is a list of the names that are left, the last one first.
bool Platform::FileSearch::First(const Char* pattern) {
    Close();
    const std::u16string whole = pattern;
    const size_t star = whole.rfind(u'*');
    if (star == std::u16string::npos) return false;
    std::vector<std::u16string> names = FakeDisk::Get().Names(whole.substr(0, star), whole.substr(star + 1));
    std::reverse(names.begin(), names.end());
    state = new std::vector<std::u16string>(std::move(names));
    return Next();
}

bool Platform::FileSearch::Next() {
    auto* const names = static_cast<std::vector<std::u16string>*>(state);
    const bool fails = FakeDisk::Get().Fails(Call::Other, name.Text());
    if (fails || !names || names->empty() || !name.Assign(names->back().c_str())) {
        Close();
        return false;
    }
    names->pop_back();
    return true;
}

void Platform::FileSearch::Close() {
    delete static_cast<std::vector<std::u16string>*>(state);
    state = nullptr;
}
