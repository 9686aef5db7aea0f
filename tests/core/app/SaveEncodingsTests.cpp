#include "app/SaveEncodings.h"

#include "app/DocumentSaver.h"
#include "app/NewDocument.h"
#include "app/SaveDialog.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "document/DecodedText.h"
#include "document/TextBuffer.h"
#include "support/ScratchFolder.h"
#include "support/WithAdditional.h"

#include <optional>

namespace {

// Keeps the encoding that it comes with, unless the user of the test has another one in mind.
class KeepingDialog final : public SaveDialog {
public:
    bool AskSave(const Document&, SaveChoice& choice) override {
        offered.push_back(choice.encoding);
        if (offered.size() > 3) return false;
        if (chosen) choice.encoding = *chosen;
        return choice.path.Assign(path.c_str());
    }

    std::u16string path;
    std::optional<Encoding> chosen;
    std::vector<Encoding> offered;
};

class SaveEncodings : public PaneDocumentsTest {
protected:
    SaveEncodings() { dialog.path = folder.Path("new.txt"); }

    TextBuffer& New(const std::u16string& text) {
        TextBuffer* const document = MakeTitledText(services.text, u"Untitled1", true);
        return Filled(document, text);
    }
    TextBuffer& NewWithPath(const std::u16string& text) {
        auto* const document = new TextBuffer(services.text);
        document->AddRef();
        EXPECT_TRUE(document->Load(folder.Path("new.txt").c_str(), true));
        return Filled(document, text);
    }
    TextBuffer& Open(const std::string& bytes) {
        auto* const document = new TextBuffer(services.text);
        document->AddRef();
        EXPECT_TRUE(document->Load(folder.Write("new.txt", bytes).c_str(), false));
        return Filled(document, u"");
    }
    TextBuffer& Filled(TextBuffer* document, const std::u16string& text) {
        EXPECT_TRUE(documents.Add(document));
        EXPECT_TRUE(document->InsertText(0, text.c_str(), static_cast<uint32_t>(text.size())));
        return *document;
    }

    ScratchFolder folder;
    KeepingDialog dialog;
    FakeFrame user;
    DocumentSaver saver{documents, display, dialog, user, batch};
    const WithAdditional on;
};

constexpr Char Chinese[] = u"\u6F22 \U0001F600";
constexpr char ChineseBytes[] = "\xE6\xBC\xA2 \xF0\x9F\x98\x80";

} // namespace

TEST_F(SaveEncodings, TheFifthIsOfferedOnlyWithTheSetting) {
    EXPECT_EQ(OfferedEncodings(Encoding::Ansi), 4u);
    EXPECT_EQ(OfferedEncodings(Encoding::PlainUtf8), 5u) << "a document that has it can be saved in it";
    on->Utf8 = 1;
    EXPECT_EQ(OfferedEncodings(Encoding::Ansi), 5u);
}

TEST_F(SaveEncodings, ByDefaultANewDocumentThatAnsiCannotHoldIsAskedAbout) {
    TextBuffer& document = New(Chinese);
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(dialog.offered, std::vector{Encoding::Ansi});
}

TEST_F(SaveEncodings, WithTheSettingItIsUtf8WithoutASignature) {
    on->Utf8 = 1;
    TextBuffer& document = New(Chinese);
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 0u);
    EXPECT_EQ(dialog.offered, std::vector{Encoding::PlainUtf8});
    EXPECT_EQ(folder.Read("new.txt"), ChineseBytes);
    // From now on that is its encoding.
    EXPECT_EQ(EncodingToSave(document), Encoding::PlainUtf8);
    EXPECT_FALSE(document.IsNew());
}

TEST_F(SaveEncodings, ANewDocumentWithANameIsSavedSoWithoutADialog) {
    on->Utf8 = 1;
    TextBuffer& document = NewWithPath(Chinese);
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 0u);
    EXPECT_TRUE(dialog.offered.empty());
    EXPECT_EQ(folder.Read("new.txt"), ChineseBytes);
}

TEST_F(SaveEncodings, WhatWasRecoveredIsInNoFileEitherAndSavedLikeANewDocument) {
    on->Utf8 = 1;
    TextBuffer* const document = MakeTitledText(services.text, u"a.txt (recovered)");
    DecodedText text;
    text.text = Heap::AllocateArray<Char>(2);
    ASSERT_NE(text.text, nullptr);
    text.text[0] = Chinese[0];
    text.capacity = 2;
    text.length = 1;
    document->TakeRecovered(text);
    ASSERT_TRUE(documents.Add(document));
    EXPECT_EQ(EncodingToSave(*document), Encoding::PlainUtf8);
}

TEST_F(SaveEncodings, WhatAnsiHoldsStaysAnsi) {
    on->Utf8 = 1;
    TextBuffer& document = New(u"caf\u00E9 \u20AC");
    EXPECT_TRUE(saver.Save(document));
    EXPECT_EQ(dialog.offered, std::vector{Encoding::Ansi});
    EXPECT_EQ(folder.Read("new.txt"), "caf\xE9 \x80");
}

TEST_F(SaveEncodings, TheChoiceOfAnsiIsAskedAbout) {
    on->Utf8 = 1;
    TextBuffer& document = New(Chinese);
    dialog.chosen = Encoding::Ansi;
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 1u);
}

TEST_F(SaveEncodings, AFileThatWasLoadedKeepsItsEncodingAndIsAskedAbout) {
    on->Utf8 = 1;
    TextBuffer& document = Open("plain");
    ASSERT_TRUE(document.InsertText(0, Chinese, 2));
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(folder.Read("new.txt"), "plain");
}

TEST_F(SaveEncodings, AFileOfUtf8TakesAnyCharacterWithoutAQuestion) {
    on->Utf8 = 1;
    for (const std::string& signature : {std::string(), std::string("\xEF\xBB\xBF")}) {
        TextBuffer& document = Open(signature + "\xC3\xA9");
        ASSERT_TRUE(document.InsertText(1, Chinese, 4));
        EXPECT_TRUE(saver.Save(document));
        EXPECT_EQ(user.questions.size(), 0u);
        EXPECT_EQ(folder.Read("new.txt"), signature + "\xC3\xA9" + ChineseBytes);
        documents.Remove(&document);
    }
}

TEST_F(SaveEncodings, HalfAPairIsAskedAboutInUtf8) {
    on->Utf8 = 1;
    TextBuffer& document = Open("\xC3\xA9");
    ASSERT_TRUE(document.InsertText(0, u"\xD83D", 1));
    user.answers = {Answer::Cancel};
    EXPECT_FALSE(saver.Save(document));
    EXPECT_EQ(user.questions.size(), 1u);
}
