#include "FaultTest.h"
#include "app/DocumentSaver.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "support/TextDocument.h"

#include <memory>

namespace {

// Names the file, in UTF-8.
class NamingDialog final : public SaveDialog {
public:
    explicit NamingDialog(const Char* name) : path(name) {}
    bool AskSave(const Document&, SaveChoice& choice) override {
        choice.encoding = Encoding::Utf8;
        choice.lineEnding = LineEnding::Dos;
        return choice.path.Assign(path);
    }

private:
    const Char* path;
};

class SaveAsFaultTest : public FaultTest {
protected:
    void Prepare() {
        user.questions.clear();
        document = std::make_unique<TextDocument>();
        ASSERT_TRUE((*document)->SetTitle(u"Untitled1"));
        ASSERT_TRUE((*document)->InsertText(0, u"new\n", 4));
        (*document)->AddRef();
        if (Document* const old = documents.At(0)) documents.Remove(old);
        ASSERT_TRUE(documents.Add(&**document));
    }
    void Inspect(bool isSaved) {
        TextBuffer& buffer = **document;
        EXPECT_EQ(buffer.IsModified(), !isSaved);
        EXPECT_EQ(Str(buffer.GetName()), isSaved ? Target : u"Untitled1");
        EXPECT_EQ(document->Store(), u"new\n");
        EXPECT_TRUE(buffer.CanDo(DocumentCommand::Undo));
        if (isSaved) return;
        ASSERT_EQ(user.questions.size(), 1u);
        EXPECT_EQ(user.questions[0].text, u"Failed saving file: " + std::u16string(Target));
    }

    FakePanes panes;
    DocumentList documents;
    FakeFrameDisplay screen;
    ScreenBatch batch{screen};
    DocumentDisplay display{documents, panes, batch};
    FakeFrame user;
    NamingDialog dialog{Target};
    DocumentSaver saver{documents, display, dialog, user, batch};
    std::unique_ptr<TextDocument> document;
};

TEST_F(SaveAsFaultTest, SavingUnderANewNameLosesNothing) {
    for (const char* before : {Missing, "old\r\n"})
        FailEverything({.prepare = [this] { Prepare(); },
                        .save = [this] { return saver.SaveAs(**document); },
                        .inspect = [this](bool isSaved) { Inspect(isSaved); },
                        .before = before,
                        .after = "\xEF\xBB\xBF"
                                 "new\r\n"});
}

class LoadFaultTest : public FaultTest {
protected:
    // Every call fails in turn in every way, until the loading runs through.
    template <class Load> void FailEveryCall(Load load, const std::string& bytes = "one\r\ntwo\r\n") {
        for (const Case& tried : Cases) {
            bool isReached = true;
            for (uint64_t number = 1; isReached && number < 100; ++number) {
                SCOPED_TRACE(std::string(tried.name) + " at call " + std::to_string(number));
                Reset();
                disk.Write(Target, bytes);
                load(number, tried.fault);
                isReached = disk.Calls() >= number;
                disk.StopFailing();
                disk.Restart(tried.unflushed);
                EXPECT_EQ(disk.Read(Target).substr(0, 3), bytes.substr(0, 3));
                EXPECT_EQ(disk.FilesBeside({Target}), std::vector<std::u16string>{}) << "stray files";
                EXPECT_EQ(disk.OpenFiles(), 0u);
            }
        }
    }
};

TEST_F(LoadFaultTest, AFileIsLoadedAsAWholeOrNotAtAll) {
    FailEveryCall([this](uint64_t number, FakeDisk::Fault fault) {
        TextDocument document;
        disk.FailAt(number, fault);
        const bool isLoaded = document->Load(Target, false);
        EXPECT_TRUE(isLoaded || disk.HasFailed());
        EXPECT_FALSE(document->IsModified());
        EXPECT_EQ(document->Content() ? document.Store() : u"(none)", isLoaded ? u"one\ntwo\n" : u"(none)");
    });
}

TEST_F(LoadFaultTest, AFileOfSeveralPiecesIsLoadedAsAWholeOrNotAtAll) {
    std::string utf16 = "\xFF\xFE";
    for (int i = 0; i < 100000; ++i) utf16 += std::string("x\0", 2);
    const std::string ansi(200000, 'x');
    for (const std::string& bytes : {utf16, ansi}) {
        const size_t length = bytes == ansi ? ansi.size() : 100000;
        FailEveryCall(
            [&](uint64_t number, FakeDisk::Fault fault) {
                TextDocument document;
                disk.FailAt(number, fault);
                const bool isLoaded = document->Load(Target, false);
                EXPECT_EQ(isLoaded, !disk.HasFailed());
                EXPECT_EQ(document->Length(), isLoaded ? length : 0);
                EXPECT_EQ(document->Content() != nullptr, isLoaded);
            },
            bytes);
    }
}

TEST_F(LoadFaultTest, AFailedReloadKeepsTheTextAndItsUndo) {
    FailEveryCall([this](uint64_t number, FakeDisk::Fault fault) {
        TextDocument document;
        ASSERT_TRUE(document->Load(Target, false));
        ASSERT_TRUE(document->InsertText(0, u"mine ", 5));
        disk.Write(Target, "one other\r\n");
        disk.FailAt(number, fault);
        const bool isLoaded = document->Reload();
        EXPECT_TRUE(isLoaded || disk.HasFailed());
        EXPECT_EQ(document.Store(), isLoaded ? u"one other\n" : u"mine one\ntwo\n");
        EXPECT_EQ(document->IsModified(), !isLoaded);
        EXPECT_EQ(document->CanDo(DocumentCommand::Undo), !isLoaded);
    });
}

} // namespace
