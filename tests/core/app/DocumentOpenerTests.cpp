#include "app/DocumentOpener.h"

#include "app/OpenFailures.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "document/TextBuffer.h"
#include "support/ScratchFolder.h"
#include "support/WithAdditional.h"

namespace {

class DocumentOpenerTest : public PaneDocumentsTest {
protected:
    uint32_t CaretLine() { return FakePanes::ViewIn(*panes.Active()).caretLine; }

    ScratchFolder folder;
    FakeFrame user; // answers questions
    OpenFailures failures{batch, user};
    DocumentOpener opener{services, documents, display, panes, failures};
};

TEST_F(DocumentOpenerTest, NewDocumentsAreNumberedAndNumbersAreNotUsedAgain) {
    opener.OpenNew();
    ASSERT_EQ(documents.Count(), 1u);
    EXPECT_EQ(Str(documents.At(0)->GetName()), u"Untitled1");
    EXPECT_EQ(display.Active(), documents.At(0));
    panes.CloseAll();
    documents.Remove(documents.At(0));
    opener.OpenNew();
    EXPECT_EQ(Str(documents.At(0)->GetName()), u"Untitled2");
}

TEST_F(DocumentOpenerTest, NewDocumentsHaveTheLineEndsOfWindowsByDefault) {
    opener.OpenNew();
    EXPECT_EQ(documents.At(0)->GetLineEnding(), LineEnding::Dos);
    ASSERT_TRUE(opener.OpenText(folder.Path("new.txt").c_str(), NoLine, true));
    EXPECT_EQ(documents.At(1)->GetLineEnding(), LineEnding::Dos);
}

TEST_F(DocumentOpenerTest, NewDocumentsHaveTheLineEndsOfUnixWhenThatIsSet) {
    const WithAdditional on;
    on->UnixNewFiles = 1;
    opener.OpenNew();
    EXPECT_EQ(documents.At(0)->GetLineEnding(), LineEnding::Unix);
    const std::u16string path = folder.Path("new.txt");
    ASSERT_TRUE(opener.OpenText(path.c_str(), NoLine, true));
    auto& named = static_cast<TextBuffer&>(*documents.At(1));
    EXPECT_EQ(named.GetLineEnding(), LineEnding::Unix);
    ASSERT_TRUE(named.InsertText(0, u"a\nb", 3));
    ASSERT_TRUE(named.Save(path.c_str(), Encoding::Keep, LineEnding::Keep));
    EXPECT_EQ(folder.Read("new.txt"), "a\nb");
    const std::u16string file = folder.Write("file.txt", "no line break");
    ASSERT_TRUE(opener.OpenText(file.c_str(), NoLine, false));
    EXPECT_EQ(documents.At(2)->GetLineEnding(), LineEnding::Dos) << "that of a file is not new";
}

TEST_F(DocumentOpenerTest, WithoutAPaneNothingIsMadeAndNoNumberUsedUp) {
    panes.makesPanes = false;
    opener.OpenNew();
    EXPECT_TRUE(documents.IsEmpty());
    panes.makesPanes = true;
    opener.OpenNew();
    EXPECT_EQ(Str(documents.At(0)->GetName()), u"Untitled1");
}

TEST_F(DocumentOpenerTest, AFileIsOpenedOnceAndItsCaretMovedToTheLine) {
    const std::u16string path = folder.Write("a.txt", "one\ntwo\nthree");
    EXPECT_TRUE(opener.OpenText(path.c_str(), 2, false));
    ASSERT_EQ(documents.Count(), 1u);
    EXPECT_EQ(display.Active(), documents.At(0));
    EXPECT_EQ(CaretLine(), 2u);
    opener.OpenNew();
    EXPECT_TRUE(opener.OpenText(path.c_str(), 1, false));
    EXPECT_EQ(documents.Count(), 2u);
    EXPECT_EQ(display.Active(), documents.At(0));
    EXPECT_EQ(CaretLine(), 1u);
    EXPECT_TRUE(opener.OpenText(path.c_str(), NoLine, false));
    EXPECT_EQ(CaretLine(), 1u);
}

// The focus may be in the command window.
TEST_F(DocumentOpenerTest, AFileThatTheActivePaneShowsIsActivatedLikeAnyOther) {
    const std::u16string path = folder.Write("a.txt", "text");
    for (const auto& open : {+[](DocumentOpener&by, const Char*name) { return by.OpenText(name, NoLine, false); },
                             +[](DocumentOpener&by, const Char*name) { return by.OpenBinary(name); }}) {
        EXPECT_TRUE(opener.OpenText(path.c_str(), NoLine, false));
        panes.focused = nullptr;
        EXPECT_TRUE(open(opener, path.c_str()));
        EXPECT_EQ(panes.focused, panes.Active());
        EXPECT_EQ(documents.MostRecent(), display.Active());
    }
}

TEST_F(DocumentOpenerTest, AFileThatDoesNotExistIsOpenedOnlyAsANewOne) {
    const std::u16string path = folder.Path("missing.txt");
    EXPECT_FALSE(opener.OpenText(path.c_str(), NoLine, false));
    EXPECT_TRUE(documents.IsEmpty());
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, u"Failed opening file: " + path);
    EXPECT_EQ(user.questions[0].kind, MessageKind::Warning);
    EXPECT_TRUE(opener.OpenText(path.c_str(), NoLine, true));
    EXPECT_EQ(documents.Count(), 1u);
    EXPECT_EQ(user.questions.size(), 1u);
}

TEST_F(DocumentOpenerTest, BytesOfAMissingFileFailUnderItsName) {
    const std::u16string path = folder.Path("missing.bin");
    EXPECT_FALSE(opener.OpenBinary(path.c_str()));
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, u"Failed opening file: " + path);
}

TEST_F(DocumentOpenerTest, AFileThatIsOpenAsTextIsShownWhenItsBytesAreAskedFor) {
    const std::u16string path = folder.Write("a.txt", "text");
    EXPECT_TRUE(opener.OpenText(path.c_str(), NoLine, false));
    EXPECT_TRUE(opener.OpenBinary(path.c_str()));
    EXPECT_EQ(documents.Count(), 1u);
}

TEST_F(DocumentOpenerTest, FailuresOfABatchAreReportedTogetherAtItsEnd) {
    batch.Begin();
    std::u16string names;
    for (const char* name : {"1", "2", "3"}) {
        EXPECT_FALSE(opener.OpenText(folder.Path(name).c_str(), NoLine, false));
        names += (names.empty() ? u"" : u"\n") + folder.Path(name);
    }
    EXPECT_TRUE(user.questions.empty());
    batch.End();
    failures.BatchEnded();
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, u"Failed opening file: " + names);
    failures.BatchEnded();
    EXPECT_EQ(user.questions.size(), 1u);
}

TEST_F(DocumentOpenerTest, OfVeryManyFailuresTheFirstAreNamed) {
    batch.Begin();
    for (int i = 0; i < 12; ++i)
        EXPECT_FALSE(opener.OpenText(folder.Path("x" + std::to_string(i)).c_str(), NoLine, false));
    batch.End();
    failures.BatchEnded();
    ASSERT_EQ(user.questions.size(), 1u);
    const std::u16string& text = user.questions[0].text;
    EXPECT_TRUE(text.ends_with(folder.Path("x9") + u"\n(and 2 more)"));
    EXPECT_EQ(text.find(u"x10"), std::u16string::npos);
}

} // namespace
