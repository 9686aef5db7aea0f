#include "app/DocumentSaver.h"

#include "app/DocumentDisplay.h"
#include "app/DocumentHold.h"
#include "app/DocumentList.h"
#include "app/SaveEncodings.h"
#include "app/SaveQuestions.h"
#include "app/ScreenBatch.h"
#include "app/UserPrompt.h"
#include "base/TextFormat.h"
#include "document/TextBuffer.h"

bool DocumentSaver::Save(Document& document) { return SaveChosen(document, !HasFile(document)); }

bool DocumentSaver::SaveAs(Document& document) { return SaveChosen(document, true); }

void DocumentSaver::SaveAll() {
    // By index, not along the nodes: while a dialog is open the list may change.
    for (uint32_t i = 0; Document* const document = documents.At(i); ++i) Save(*document);
}

bool DocumentSaver::Choose(Document& document, bool askForName, SaveChoice& choice) {
    choice.encoding = EncodingToSave(document);
    return askForName ? saveDialog.AskSave(document, choice) : choice.path.Assign(document.GetName());
}

bool DocumentSaver::SaveChosen(Document& document, bool askForName) {
    const DocumentHold hold(document);
    SaveChoice choice;
    for (Answer answer = Answer::No; answer != Answer::Yes; askForName = askForName || answer == Answer::No) {
        if (!Choose(document, askForName, choice)) return false;
        answer = AskBeforeSave(prompt, document, choice);
        if (answer == Answer::Cancel || !documents.Contains(&document)) return false;
    }
    if (!Write(document, choice)) return false;
    // Bytes are always written back into their own file, whatever name was chosen.
    if (askForName && !document.IsBinary() && document.SetPath(choice.path.Text())) {
        static_cast<void>(document.SetTitle(u"")); // the empty text needs no memory
        // By the new path; without memory the old engine stays.
        static_cast<void>(static_cast<TextBuffer&>(document).SetEngineName(u""));
    }
    if (display.Active() == &document) screen.RefreshTitle();
    return true;
}

bool DocumentSaver::Write(Document& document, const SaveChoice& choice) {
    if (document.Save(choice.path.Text(), choice.encoding, choice.lineEnding)) return true;
    WString text;
    if (Text::AppendFormat(text, u"Failed saving file: %s", choice.path.Text()))
        prompt.AskUser(text.Text(), MessageKind::Warning);
    return false;
}
