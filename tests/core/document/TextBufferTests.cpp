#include "document/TextBuffer.h"

#include "settings/IniFile.h"
#include "support/FakeEngine.h"
#include "support/FakeView.h"
#include "support/TestServices.h"
#include "support/TextDocument.h"
#include "syntax/EngineDefinition.h"

#include <gtest/gtest.h>

namespace {

TextBuffer* NewDocument() {
    auto* document = new TextBuffer(textServices);
    document->AddRef();
    return document;
}

std::u16string SessionText(const TextBuffer& document) {
    WString text;
    EXPECT_TRUE(document.GetSessionText(text));
    return {text.Text(), text.Length()};
}

std::u16string EndOf(const Char* text, size_t count) {
    const std::u16string all = text;
    return all.size() < count ? all : all.substr(all.size() - count);
}

} // namespace

TEST(TextBuffer, AFreshDocumentHasTheInitialValues) {
    auto* document = new TextBuffer(textServices);
    EXPECT_EQ(document->AddRef(), 1u) << "no reference is held before";
    EXPECT_EQ(document->GetLineEnding(), LineEnding::Dos);
    EXPECT_EQ(document->EditLineNumber(), NoLine);
    EXPECT_EQ(document->Content(), nullptr);
    EXPECT_EQ(document->Engine(), nullptr);
    EXPECT_FALSE(document->IsReadOnly());
    EXPECT_FALSE(document->IsOutput());
    EXPECT_FALSE(document->IsModified());
    EXPECT_FALSE(document->IsBinary());
    EXPECT_STREQ("", std::string(document->GetName(), document->GetName()).c_str());
    document->Release();
}

TEST(TextBuffer, IsSharedByReference) {
    TextBuffer* document = NewDocument();
    EXPECT_EQ(document->AddRef(), 2u);
    EXPECT_EQ(document->Release(), 1u);
    EXPECT_EQ(document->Release(), 0u);
}

TEST(TextBuffer, TheLastReleaseDestroysTheViewsAndLetsGoOfTheEngine) {
    const int views = FakeView::alive;
    const int engines = FakeEngine::alive;
    {
        TextDocument document(u"abc");
        document->AttachEngine(new FakeEngine);
        FakeView::Create(*document)->Activate();
        FakeView::Create(*document);
        EXPECT_EQ(FakeView::alive, views + 2);
        EXPECT_EQ(FakeEngine::alive, engines + 1);
    }
    EXPECT_EQ(FakeView::alive, views);
    EXPECT_EQ(FakeEngine::alive, engines);
}

TEST(TextBuffer, AttachingAnEngineReleasesTheOneBefore) {
    TextDocument document;
    auto* first = new FakeEngine;
    first->AddRef();
    document->AttachEngine(first);
    document->AttachEngine(new FakeEngine);
    EXPECT_EQ(first->Release(), 0u) << "only the test's reference was left";
}

TEST(TextBuffer, ViewsAreListedInTheOrderTheyWereMade) {
    TextDocument document;
    ViewNode* next = nullptr;
    EXPECT_EQ(document->EnumViews(nullptr, next), nullptr);
    EXPECT_EQ(next, nullptr);
    FakeView* first = FakeView::Create(*document);
    FakeView* second = FakeView::Create(*document);
    EXPECT_EQ(document->EnumViews(nullptr, next), first);
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(document->EnumViews(next, next), second);
    EXPECT_EQ(next, nullptr);
}

TEST(TextBuffer, AViewThatCannotBeMadeLeavesNoTrace) {
    TextDocument document;
    FakeView::Create(*document);
    FakeView::failNext = true;
    EXPECT_EQ(FakeView::Create(*document), nullptr);
    ViewNode* next = nullptr;
    document->EnumViews(nullptr, next);
    EXPECT_EQ(next, nullptr);
    textServices.makeView = nullptr;
    EXPECT_EQ(document->CreateView(nullptr), nullptr) << "there is no factory of views";
}

TEST(TextBuffer, AForgottenViewIsNotTouchedAgain) {
    TextDocument document(u"abc");
    FakeView* first = FakeView::Create(*document);
    FakeView* second = FakeView::Create(*document);
    first->Activate();
    first->Destroy();
    EXPECT_EQ(document->ActiveView(), nullptr);
    document->RepaintAll();
    EXPECT_TRUE(document->InsertText(0, u"x\n", 2));
    ViewNode* next = nullptr;
    EXPECT_EQ(document->EnumViews(nullptr, next), second);
    EXPECT_EQ(next, nullptr);
    document->ForgetView(nullptr);
}

TEST(TextBuffer, TheNameIsThePathOrElseTheTitle) {
    TextDocument document;
    EXPECT_TRUE(document->SetTitle(u"Output"));
    EXPECT_EQ(std::u16string(document->GetName()), u"Output");
    EXPECT_TRUE(document->SetPath(u"some.txt"));
    EXPECT_EQ(EndOf(document->GetName(), 9), u"\\some.txt") << "the full path of the name";
    EXPECT_EQ(std::u16string(document->GetTitle()), u"Output");
}

TEST(TextBuffer, ANewDocumentWithANameIsEmptyAndHasAnEngine) {
    TextBuffer* document = NewDocument();
    FakeView* view = FakeView::Create(*document);
    EXPECT_TRUE(document->Load(u"some.cpp", true));
    EXPECT_EQ(document->Length(), 0u);
    EXPECT_EQ(document->GetLineCount(), 1u);
    EXPECT_EQ(EndOf(document->GetName(), 9), u"\\some.cpp");
    EXPECT_NE(document->Engine(), nullptr);
    EXPECT_FALSE(document->IsModified());
    EXPECT_EQ(view->CaretOffset(), 0u);
    document->Release();
}

TEST(TextBuffer, ClearingForANewTextKeepsTheViewsAndForgetsTheRest) {
    TextDocument document(u"one\ntwo\n");
    FakeView* view = FakeView::Create(*document);
    view->PutCaret(1, 2);
    view->Activate();
    EXPECT_TRUE(document->TypeChar(view, u'x', 2, true, false));
    document->ToggleBookmark(1);
    EXPECT_TRUE(document->CommitEdit());
    TextBufferProbe::MarkSaved(*document);
    EXPECT_TRUE(document->TypeChar(view, u'y', 3, true, false));
    document->LineToOffset(2);
    EXPECT_TRUE(document->MakeNew(u"other.txt"));
    EXPECT_EQ(view->CaretLine(), 0u);
    EXPECT_EQ(view->CaretColumn(), 0u);
    EXPECT_EQ(document.Text(), u"");
    EXPECT_EQ(document->GetLineCount(), 1u);
    EXPECT_EQ(TextBufferProbe::Capacity(*document), 1u);
    EXPECT_FALSE(document->IsModified());
    EXPECT_FALSE(document->CanDo(DocumentCommand::Undo));
    EXPECT_FALSE(document->HasPendingEdit());
    EXPECT_TRUE(document.MarkedLines().empty());
    EXPECT_EQ(TextBufferProbe::Cache(*document).Count(), 0u);
}

TEST(TextBuffer, CanDoTellsWhatIsAllowed) {
    TextDocument document(u"abc");
    EXPECT_TRUE(document->CanDo(DocumentCommand::Edit));
    EXPECT_FALSE(document->CanDo(DocumentCommand::Undo));
    EXPECT_FALSE(document->CanDo(DocumentCommand::Redo));
    EXPECT_FALSE(document->CanDo(static_cast<DocumentCommand>(4)));
    EXPECT_FALSE(document->CanDo(static_cast<DocumentCommand>(UINT32_MAX)));
    EXPECT_TRUE(document->InsertText(0, u"x", 1));
    EXPECT_TRUE(document->CanDo(DocumentCommand::Undo));
    EXPECT_TRUE(document->DoCommand(DocumentCommand::Undo));
    EXPECT_EQ(document.Text(), u"abc");
    EXPECT_TRUE(document->CanDo(DocumentCommand::Redo));
    EXPECT_TRUE(document->DoCommand(DocumentCommand::Redo));
    EXPECT_EQ(document.Text(), u"xabc");
    EXPECT_TRUE(document->MarkAsOutput());
    EXPECT_FALSE(document->CanDo(DocumentCommand::Edit));
    EXPECT_FALSE(document->CanDo(DocumentCommand::Paste));
}

TEST(TextBuffer, UndoAndRedoOfADocumentMadeReadOnlyDoNothing) {
    TextDocument document(u"abc");
    EXPECT_TRUE(document->InsertText(0, u"x", 1));
    EXPECT_TRUE(document->InsertText(0, u"y", 1));
    EXPECT_TRUE(document->Undo());
    EXPECT_TRUE(document->MarkAsOutput());
    for (const DocumentCommand command : {DocumentCommand::Undo, DocumentCommand::Redo}) {
        EXPECT_FALSE(document->CanDo(command));
        EXPECT_TRUE(document->DoCommand(command));
        EXPECT_EQ(document.Text(), u"xabc");
    }
}

TEST(TextBuffer, ABookmarkBeyondTheLastLineIsNotSet) {
    TextDocument document(u"a\nb");
    for (const uint32_t line : {2u, 3u, 1000u, UINT32_MAX - 1}) document->ToggleBookmark(line);
    EXPECT_EQ(document->NextMark(0, LineMark::Bookmark, true), nullptr);
    document->ToggleBookmark(1);
    EXPECT_NE(document->NextMark(1, LineMark::Bookmark, true), nullptr);
}

TEST(TextBuffer, OtherCommandsAreNotItsOwn) {
    TextDocument document;
    EXPECT_FALSE(document->DoCommand(DocumentCommand::Edit));
    EXPECT_FALSE(document->DoCommand(DocumentCommand::Paste));
    EXPECT_FALSE(document->DoCommand(static_cast<DocumentCommand>(UINT32_MAX)));
}

TEST(TextBuffer, OnlyTheSecondSettingsFlagRenewsTheEngine) {
    TextDocument document;
    auto* engine = new FakeEngine;
    document->AttachEngine(engine);
    document->OnSettingsChanged(SettingsEffect::Layout);
    EXPECT_EQ(document->Engine(), engine);
    document->OnSettingsChanged(SettingsEffect::Engine);
    EXPECT_NE(document->Engine(), engine);
    EXPECT_NE(document->Engine(), nullptr);
}

TEST(TextBuffer, ResettingTheEngineRepaintsAllViews) {
    TextDocument document;
    FakeView* view = FakeView::Create(*document);
    auto* engine = new FakeEngine;
    document->AttachEngine(engine);
    view->ForgetCalls();
    document->ResetSyntaxEngine();
    EXPECT_NE(document->Engine(), engine);
    EXPECT_EQ(view->invalidations, 1);
}

TEST(TextBuffer, TheEngineIsChosenByItsNameOrElseByThePath) {
    const IniFile noSettings;
    LoadEngineDefinitions(noSettings);
    TextDocument document;
    ASSERT_TRUE(document->SetPath(u"a.html"));
    document->ResetSyntaxEngine();
    EXPECT_EQ(std::u16string(document->Engine()->BraceCharacters()), u"{}()[]<>");
    ASSERT_TRUE(document->SetEngineName(u"cpp"));
    EXPECT_EQ(std::u16string(document->Engine()->BraceCharacters()), u"{}()[]");
    document->OnSettingsChanged(SettingsEffect::Engine); // does not undo the choice
    EXPECT_EQ(std::u16string(document->Engine()->BraceCharacters()), u"{}()[]");
    ASSERT_TRUE(document->SetEngineName(u""));
    EXPECT_EQ(std::u16string(document->Engine()->BraceCharacters()), u"{}()[]<>");
    document->AttachEngine(nullptr);
    ReleaseEngineDefinitions();
}

TEST(TextBuffer, TheSessionTextNamesFileCaretAndBookmarks) {
    TextDocument document(u"0\n1\n2\n3\n");
    ASSERT_TRUE(document->SetTitle(u"Notes"));
    EXPECT_EQ(SessionText(*document), u"e Notes\r\n");
    FakeView* view = FakeView::Create(*document);
    FakeView::Create(*document)->PutCaret(1, 0);
    view->PutCaret(3, 1);
    EXPECT_EQ(SessionText(*document), u"e Notes\r\nl 4\r\n");
    for (uint32_t line : {3u, 0u, 2u}) document->ToggleBookmark(line);
    EXPECT_EQ(SessionText(*document), u"e Notes\r\nl 4\r\nbm 1\r\nbm 3\r\nbm 4\r\n");
}

TEST(TextBuffer, TheSessionTextIsAppended) {
    TextDocument document;
    ASSERT_TRUE(document->SetTitle(u"x"));
    WString text;
    ASSERT_TRUE(text.Assign(u"sessionfile\r\n"));
    EXPECT_TRUE(document->GetSessionText(text));
    EXPECT_EQ(std::u16string(text.Text()), u"sessionfile\r\ne x\r\n");
}

TEST(TextBuffer, RepaintAllReachesEveryViewWithAWindowAndReloadsTheEditLine) {
    TextDocument document(u"one\ntwo\n");
    FakeView* view = FakeView::Create(*document);
    FakeView* hidden = FakeView::Create(*document, false);
    view->PutCaret(1, 0);
    document->SetActiveView(view);
    EXPECT_EQ(document->EditLineNumber(), NoLine);
    document->RepaintAll();
    EXPECT_EQ(view->invalidations, 1);
    EXPECT_EQ(hidden->invalidations, 0);
    EXPECT_EQ(document->EditLineNumber(), 1u);
}

TEST(TextBuffer, RepaintLinesReloadsTheEditLineOnlyWhenTheCaretLineIsAmongThem) {
    TextDocument document(u"0\n1\n2\n3\n");
    FakeView* view = FakeView::Create(*document);
    FakeView* hidden = FakeView::Create(*document, false);
    view->PutCaret(2, 0);
    document->SetActiveView(view);
    document->RepaintLines({0, 1});
    document->RepaintLines({3, 3});
    EXPECT_EQ(document->EditLineNumber(), NoLine);
    document->RepaintLines({3, 1});
    EXPECT_EQ(document->EditLineNumber(), 2u);
    EXPECT_EQ(view->invalidatedLines, (std::vector<LineRange>{{0, 1}, {3, 3}, {3, 1}}));
    EXPECT_TRUE(hidden->invalidatedLines.empty());
}

TEST(TextBuffer, EveryViewIsNotifiedOfTheLineCount) {
    TextDocument document;
    FakeView* view = FakeView::Create(*document);
    FakeView* hidden = FakeView::Create(*document, false);
    ASSERT_TRUE(document->InsertText(0, u"\n", 1));
    EXPECT_EQ(view->lineCountChanges, 1);
    EXPECT_EQ(hidden->lineCountChanges, 1);
}

TEST(TextBuffer, TheModifiedStateIsReportedThroughTheFirstView) {
    TextDocument document;
    document->NotifyModified();
    FakeView* first = FakeView::Create(*document);
    FakeView* second = FakeView::Create(*document);
    document->NotifyModified();
    EXPECT_EQ(first->documentChanges, 1);
    EXPECT_EQ(second->documentChanges, 0);
}

TEST(TextBuffer, TogglingABookmarkRepaintsItsLineAndClearingRepaintsAll) {
    TextDocument document(u"0\n1\n");
    FakeView* view = FakeView::Create(*document);
    document->ToggleBookmark(1);
    EXPECT_EQ(view->invalidatedLines, (std::vector<LineRange>{{1, 1}}));
    EXPECT_NE(document->FindMark(1), nullptr);
    EXPECT_EQ(document->NextMark(0, LineMark::Bookmark, false), document->FindMark(1));
    EXPECT_EQ(document->PrevMark(2, LineMark::Bookmark, false), document->FindMark(1));
    EXPECT_EQ(view->invalidations, 0);
    document->ClearBookmarks();
    EXPECT_EQ(document->FindMark(1), nullptr);
    EXPECT_EQ(view->invalidations, 1);
    EXPECT_FALSE(document->IsModified());
}
