#include "app/Session.h"

#include "app/CommandContext.h"
#include "app/DocumentList.h"
#include "base/CodePage.h"
#include "base/Platform.h"
#include "base/SafeSaver.h"
#include "base/TextFormat.h"
#include "document/Document.h"

namespace {

bool AppendDocuments(const DocumentList& documents, WString& out) {
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next)
        if (HasFile(*node->document) && !node->document->GetSessionText(out)) return false;
    return true;
}

bool Encode(const WString& text, Platform::ByteBlock& out) {
    const size_t most = MaxBytes(CodePage::Utf8, text.Length());
    out.bytes = Heap::AllocateArray<uint8_t>(most);
    if (!out.bytes) return false;
    out.size = FromUtf16(CodePage::Utf8, text.Text(), text.Length(), out.bytes, most);
    return out.size != 0;
}

// However it is named.
bool IsSessionFile(const CommandState& state, const Char* file) {
    WString path;
    const Char* const own = state.sessionFile.Text();
    return (Platform::FullPath(file, path) && Platform::CompareNames(own, path.Text()) == 0) ||
           Platform::IsSameFile(own, file);
}

enum class Permission { Given, Refused, Unknown };

// Only the current session's own file is replaced without a question. Unknown without memory to find out or to ask.
Permission MayReplace(CommandContext& frame, const Char* file) {
    if (IsSessionFile(frame.commands, file)) return Permission::Given;
    const Platform::Entry present = Platform::EntryKind(file);
    if (present == Platform::Entry::Missing) return Permission::Given;
    WString question;
    if (present == Platform::Entry::Unknown ||
        !Text::AppendFormat(question, u"%s already exists.\nWould you like to overwrite it?", file))
        return Permission::Unknown;
    const bool isGiven = frame.AskUser(question.Text(), MessageKind::YesNoCancel) == Answer::Yes;
    return isGiven ? Permission::Given : Permission::Refused;
}

void ReportFailure(CommandContext& frame, const Char* file) {
    WString message;
    if (Text::AppendFormat(message, u"Failed saving file: %s", file))
        frame.AskUser(message.Text(), MessageKind::Warning);
}

} // namespace

bool BuildSessionText(const DocumentList& documents, WString& out) {
    const uint32_t before = out.Length();
    if (out.Append(u"sessionfile\r\n") && AppendDocuments(documents, out)) return true;
    out.Truncate(before);
    return false;
}

void SaveSession(CommandContext& frame, const Char* file) {
    WString name;
    if (!name.Assign(file)) return ReportFailure(frame, file);
    name.StripQuotes();
    WString text;
    Platform::ByteBlock bytes;
    if (!BuildSessionText(frame.Documents(), text) || !Encode(text, bytes)) return ReportFailure(frame, name.Text());
    const Permission permission = MayReplace(frame, name.Text());
    if (permission == Permission::Unknown) return ReportFailure(frame, name.Text());
    if (permission == Permission::Refused) return;
    BlockSource source(bytes.bytes, bytes.size);
    if (frame.Saver().Save(name.Text(), source, Replaced::Kept) != SaveResult::Saved) ReportFailure(frame, name.Text());
}
