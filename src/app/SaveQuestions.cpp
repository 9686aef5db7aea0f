#include "app/SaveQuestions.h"

#include "app/SaveDialog.h"
#include "app/SaveEncodings.h"
#include "app/UserPrompt.h"
#include "base/Platform.h"
#include "base/TextFormat.h"
#include "document/TextBuffer.h"

namespace {

// Null for bytes, which have no encoding.
TextBuffer* AsText(Document& document) {
    Encoding encoding = Encoding::Ansi;
    const Char* const* names = nullptr;
    return document.GetEncoding(encoding, names) ? static_cast<TextBuffer*>(&document) : nullptr;
}

bool IsOwnFile(const Document& document, const Char* path) {
    WString full;
    return *document.GetTitle() == 0 && Platform::FullPath(path, full) &&
           Platform::CompareNames(full.Text(), document.GetName()) == 0;
}

Answer Ask(UserPrompt& user, const Char* format, const Char* name) {
    WString question;
    // What cannot be asked is not done.
    return Text::AppendFormat(question, format, name) ? user.AskUser(question.Text(), MessageKind::YesNoCancel)
                                                      : Answer::Cancel;
}

} // namespace

Answer AskBeforeSave(UserPrompt& user, Document& document, const SaveChoice& choice) {
    TextBuffer* const text = AsText(document);
    // Bytes go into their own file, whatever was chosen.
    const Char* const path = text ? choice.path.Text() : document.GetName();
    const bool isOwnFile = IsOwnFile(document, path);
    const struct {
        bool applies;
        const Char* format;
    } questions[] = {
        {isOwnFile && document.HasOtherFile(), u"%s has been modified by another program.\nSave over it?"},
        {isOwnFile && text && text->LosesBytes(),
         u"%s contains bytes that cannot be saved as they were.\nSave over it?"},
        {text && !CanHold(choice.encoding, *text),
         u"%s contains characters that its encoding cannot hold.\nSave them as question marks?"},
        {text && !IsReadAgain(choice.encoding, *text),
         u"%s would be read in another encoding when it is opened again.\nSave it anyway?"},
    };
    for (const auto& question : questions) {
        if (!question.applies) continue;
        const Answer answer = Ask(user, question.format, path);
        if (answer != Answer::Yes) return answer;
    }
    return Answer::Yes;
}
