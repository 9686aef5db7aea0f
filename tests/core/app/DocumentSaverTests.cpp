#include "app/DocumentSaver.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"

namespace {

class FakeSaveDialog final : public SaveDialog {
public:
    bool AskSave(const Document&, SaveChoice& choice) override {
        ++shown;
        return !answer.empty() && choice.path.Assign(answer.c_str());
    }

    std::u16string answer; // empty: cancelled
    int shown = 0;
};

class DocumentSaverTest : public PaneDocumentsTest {
protected:
    FakeDocument& AddUntitled() {
        auto* const document = FakeDocument::WithTitle(u"Untitled1");
        document->binary = true; // a text's engine is another matter
        EXPECT_TRUE(documents.Add(document));
        return *document;
    }

    FakeSaveDialog dialog;
    FakeFrame user;
    DocumentSaver saver{documents, display, dialog, user, batch};
};

TEST_F(DocumentSaverTest, AFileIsSavedUnderItsNameWithoutADialog) {
    FakeDocument& a = AddFile(u"C:\\a.txt");
    ASSERT_TRUE(display.ShowNew(a));
    screen.titles = 0;
    EXPECT_TRUE(saver.Save(a));
    EXPECT_EQ(a.savedTo, u"C:\\a.txt");
    EXPECT_EQ(dialog.shown, 0);
    EXPECT_EQ(screen.titles, 1);
}

TEST_F(DocumentSaverTest, ADocumentWithoutAFileAsksForOne) {
    FakeDocument& untitled = AddUntitled();
    EXPECT_FALSE(saver.Save(untitled)); // cancelled
    EXPECT_EQ(untitled.savedTo, u"");
    dialog.answer = u"C:\\new.txt";
    EXPECT_TRUE(saver.Save(untitled));
    EXPECT_EQ(untitled.savedTo, u"C:\\new.txt");
    EXPECT_EQ(dialog.shown, 2);
}

TEST_F(DocumentSaverTest, SaveAsAsksAlways) {
    FakeDocument& a = AddFile(u"C:\\a.txt");
    a.binary = true;
    dialog.answer = u"C:\\b.txt";
    EXPECT_TRUE(saver.SaveAs(a));
    EXPECT_EQ(a.savedTo, u"C:\\b.txt");
    EXPECT_EQ(a.path, u"C:\\a.txt") << "bytes keep their own file";
}

TEST_F(DocumentSaverTest, AFailureIsReported) {
    FakeDocument& a = AddFile(u"C:\\a.txt");
    a.savingWorks = false;
    EXPECT_FALSE(saver.Save(a));
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, u"Failed saving file: C:\\a.txt");
    EXPECT_EQ(user.questions[0].kind, MessageKind::Warning);
}

TEST_F(DocumentSaverTest, SaveAllGoesOnAfterAFailureAndACancelledDialog) {
    FakeDocument& a = AddFile(u"C:\\a.txt");
    AddUntitled();
    FakeDocument& c = AddFile(u"C:\\c.txt");
    a.savingWorks = false;
    saver.SaveAll();
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, u"Failed saving file: C:\\a.txt");
    EXPECT_EQ(dialog.shown, 1);
    EXPECT_EQ(c.savedTo, u"C:\\c.txt");
}

} // namespace
