// Random edits, saves, searches, keys and paints of a small file and its hex view, the file now and then
// cut short or gone. What is checked: the content is that of a plain string, saving writes it and nothing
// else, the file never becomes longer, searches find what a naive one finds, and the caret stays inside.

#include "binary/HexRows.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/TestHexView.h"
#include "support/TestServices.h"
#include "viewbase/FindState.h"
#include "viewbase/ViewKey.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

class Input {
public:
    Input(const uint8_t* first, size_t size) : at(first), end(first + size) {}
    bool Left() const { return at < end; }
    uint32_t Byte() { return at < end ? *at++ : 0; }
    uint32_t Word() { return Byte() << 8 | Byte(); }

private:
    const uint8_t* at;
    const uint8_t* end;
};

// A file of this process, in memory where the system offers that.
const std::string& FileName() {
    static const std::string name = std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") + "/orvane-fuzz-" +
                                    std::to_string(getpid()) + "-bytes";
    return name;
}

std::u16string Path() {
    std::u16string path(FileName().begin(), FileName().end());
    std::replace(path.begin(), path.end(), u'/', u'\\');
    return path;
}

void WriteFile(const std::string& bytes) {
    std::FILE* file = std::fopen(FileName().c_str(), "wb");
    Require(file && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fclose(file) == 0);
}

std::string ReadFile() {
    std::string bytes(70000, '\0');
    std::FILE* file = std::fopen(FileName().c_str(), "rb");
    Require(file);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    std::fclose(file);
    return bytes;
}

constexpr uint32_t Keys[] = {ViewKey::Left,
                             ViewKey::Right,
                             ViewKey::Up,
                             ViewKey::Down,
                             ViewKey::PageUp,
                             ViewKey::PageDown,
                             ViewKey::Home,
                             ViewKey::End,
                             ViewKey::F3,
                             u'A',
                             u'C',
                             u'V',
                             u'Y',
                             u'Z',
                             u'a'};

class Session {
public:
    Session(Input& in, const std::string& bytes) : in(in), content(bytes), onDisk(bytes) {
        WriteFile(bytes);
        document->AddRef();
        Require(document->Open(Path().c_str()));
        shown = TestHexView::Create(*document);
        Require(shown);
        shown->surface.SetSize(800, 160);
        shown->input.OnSize(false);
        shown->input.OnAttached();
        shown->surface.TakeFocus();
    }
    ~Session() {
        document->Release();
        std::remove(FileName().c_str());
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void Step();
    // Takes every step back: what was there when the file was opened.
    void UndoAll(const std::string& initial) {
        if (isDamaged) return;
        while (document->CanDo(DocumentCommand::Undo)) Require(document->Undo());
        Require(Content() == initial);
    }

private:
    std::string Content() {
        std::string bytes(content.size(), '\0');
        Require(document->ReadBytes(0, reinterpret_cast<uint8_t*>(bytes.data()), bytes.size()));
        return bytes;
    }
    void Edit();
    void Save();
    void Find();
    void Keyboard();
    void Paint();
    void Damage();
    void Check();

    Input& in;
    BinaryDocument* document = new BinaryDocument(hexServices);
    TestHexView* shown = nullptr;
    HexRows rows;
    std::string content; // what has to be there; no longer known once the file is damaged
    std::string onDisk;
    bool isDamaged = false;
};

void Session::Edit() {
    const uint64_t offset = in.Word();
    const std::string bytes(in.Byte() % 8 ? 1 + in.Byte() % 20 : 1 + in.Word() % 20000, static_cast<char>(in.Byte()));
    const bool fits = offset < content.size() && bytes.size() <= content.size() - offset;
    const bool done =
        document->EditBytes(offset, reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(),
                            in.Byte() & 1 ? &shown->editor : nullptr, {{offset, false}, {offset + 1, true}});
    Require(isDamaged ? fits || !done : done == fits);
    if (done) content.replace(static_cast<size_t>(offset), bytes.size(), bytes);
}

void Session::Save() {
    // Without changes nothing is written, and what became of the file does not matter.
    const bool unchanged = !document->IsModified();
    const bool saved = document->Save(nullptr, Encoding::Ansi, LineEnding::None);
    Require(saved == (unchanged || !isDamaged));
    if (isDamaged) return;
    onDisk = content;
    Require(!document->IsModified() && ReadFile() == onDisk);
}

// In what is on the disk.
void Session::Find() {
    const uint64_t from = in.Word();
    const bool backward = in.Byte() & 1;
    std::string sought;
    if (!onDisk.empty()) sought = onDisk.substr(in.Word() % onDisk.size(), 1 + in.Byte());
    if (in.Byte() % 4 == 0) sought += static_cast<char>(in.Byte());
    std::u16string digits;
    for (const char c : sought) {
        const auto byte = static_cast<uint8_t>(c);
        digits += {u"0123456789ABCDEF"[byte >> 4], u"0123456789abcdef"[byte & 15], u' '};
    }
    WString pattern;
    Require(pattern.Assign(digits.c_str()));
    ByteHit hit;
    const bool done =
        document->FindBytes(pattern, {.from = from, .matchCase = true, .backward = backward, .hexPattern = true}, hit);
    if (isDamaged) return;
    const auto start = static_cast<size_t>(std::min<uint64_t>(from, onDisk.size()));
    size_t expected = std::string::npos;
    if (!sought.empty() && backward) {
        if (start) expected = onDisk.rfind(sought, start - 1);
        if (expected == std::string::npos) expected = onDisk.rfind(sought);
    } else if (!sought.empty()) {
        expected = onDisk.find(sought, start);
        if (expected == std::string::npos) expected = onDisk.find(sought);
    }
    Require(done == (expected != std::string::npos));
    Require(!done || (hit.offset == expected && hit.length == sought.size()));
}

void Session::Keyboard() {
    shown->surface.ctrl = in.Byte() & 1;
    shown->surface.shift = in.Byte() & 1;
    shown->surface.clipboardHasText = true;
    shown->surface.clipboard = in.Byte() & 1 ? u"0a 0B 41" : u"no digits";
    shown->input.OnKeyDown(Keys[in.Byte() % std::size(Keys)]);
    shown->input.OnChar(static_cast<Char>(u'0' + in.Byte() % 60));
    if (!isDamaged) content = Content(); // what the keys do is compared with a model elsewhere
}

void Session::Paint() {
    shown->editor.Viewport().ScrollTo(in.Word());
    const ClientPoint point = {static_cast<int32_t>(in.Word()) - 3000, static_cast<int32_t>(in.Word()) - 3000};
    shown->input.Drag().OnLeftButtonDown(point, (in.Byte() & 1) != 0);
    shown->input.Drag().OnLeftButtonUp();
    const auto top = static_cast<int32_t>(in.Byte());
    if (!rows.Begin(shown->editor, top, top + static_cast<int32_t>(in.Byte()))) return;
    uint32_t checksum = 0;
    for (RowPicture row; rows.Next(row);) {
        for (uint32_t i = 0; i < row.runCount; ++i)
            for (uint32_t k = 0; k < row.runs[i].count; ++k) checksum += row.text[row.runs[i].start + k];
    }
    volatile uint32_t sink = checksum;
    static_cast<void>(sink);
}

// Cuts the file short or deletes it.
void Session::Damage() {
    if (in.Byte() % 8 || isDamaged || onDisk.empty()) return;
    const size_t size = in.Word() % onDisk.size();
    isDamaged = true;
    onDisk.resize(size);
    Require(truncate(FileName().c_str(), static_cast<off_t>(size)) == 0);
    if (in.Byte() & 1) return;
    std::remove(FileName().c_str());
    WriteFile(onDisk); // another file of that name
}

void Session::Check() {
    Require(document->FileSize() == content.size());
    Require(shown->editor.Caret() <= content.size() && shown->editor.Anchor() <= content.size());
    Require(document->Window().Valid() <= FileWindow::Capacity);
    Require(isDamaged || Content() == content);
    Require(ReadFile() == onDisk);
}

void Session::Step() {
    using Action = void (Session::*)();
    constexpr Action Actions[] = {&Session::Edit, &Session::Edit,     &Session::Save,  &Session::Find,
                                  &Session::Find, &Session::Keyboard, &Session::Paint, &Session::Damage};
    const uint32_t choice = in.Byte();
    if (choice & 0x80)
        static_cast<void>(document->EnsureWindow(in.Word(), in.Word() % FileWindow::Capacity));
    else
        (this->*Actions[choice % std::size(Actions)])();
    Check();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr size_t Sizes[] = {0, 1, 15, 16, 17, 500, 16383, 16384, 16385, 32767, 32768, 32769, 40000};
    Input in(data, size);
    LoadSettings(IniFile());
    std::string bytes(Sizes[in.Byte() % std::size(Sizes)], '\0');
    const uint32_t period = 1 + in.Byte();
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i % period + i / 4096);
    {
        Session session(in, bytes);
        for (uint32_t steps = 0; in.Left() && steps < 100; ++steps) session.Step();
        session.UndoAll(bytes);
    }
    findState.Release();
    ReleaseSettings();
    return 0;
}
