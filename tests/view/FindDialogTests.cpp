#include "TextViewTest.h"
#include "resource.h"
#include "support/FailureInjection.h"
#include "support/FakeSurface.h"
#include "view/DialogDriver.h"
#include "viewbase/FindState.h"

// What the find dialogs report to the frame. How they are used with keys is tested in the real program.

namespace {

class FindDialogsTest : public TextViewTest {
protected:
    void TearDown() override {
        TextViewTest::TearDown();
        findState.Release();
        findState.matchCase = findState.wholeWord = findState.searchUp = findState.cancelled = false;
    }
    void ShowText(const std::u16string& text) {
        Show(text);
        view->SetHost(&host);
    }

    FakeHost host;
};

TEST_F(FindDialogsTest, NotFoundIsAnInformation) {
    ShowText(u"abc");
    dialog::WhenShown([](HWND window) {
        dialog::SetText(window, IDC_FIND_WHAT, L"zz");
        dialog::Ok(window);
        EXPECT_TRUE(IsWindow(window));
        dialog::Cancel(window);
    });
    view->ExecuteCommand(ViewCommand::Find);
    dialog::WhenShown([](HWND window) {
        dialog::Ok(window);
        dialog::Click(window, IDC_REPLACE_ONE);
        dialog::Cancel(window);
    });
    view->ExecuteCommand(ViewCommand::Replace);
    EXPECT_EQ(host.messages, std::vector<std::u16string>(3, u"Text not found"));
    EXPECT_EQ(host.messageKinds, std::vector<MessageKind>(3, MessageKind::Information));
}

TEST_F(FindDialogsTest, AMatchIsSelectedWithoutAMessage) {
    ShowText(u"abc");
    dialog::WhenShown([](HWND window) {
        dialog::SetText(window, IDC_FIND_WHAT, L"bc");
        dialog::Ok(window);
    });
    view->ExecuteCommand(ViewCommand::Find);
    EXPECT_TRUE(host.messages.empty());
    EXPECT_EQ(Editor().SelectionAnchor(), 1u);
    EXPECT_EQ(Editor().CaretOffset(), 3u);
}

// What is looked for is remembered first, and the newest entry is what is replaced.
TEST_F(FindDialogsTest, WithoutMemoryNoOlderTextIsReplaced) {
    ShowText(u"");
    const uint64_t failures = FailEachAllocation([this] {
        {
            const FailurePause pause;
            findState.Release();
            EXPECT_TRUE(findState.searchHistory.Add(u"older", 5));
            TextBuffer& buffer = *Editor().GetTextBuffer();
            EXPECT_TRUE(buffer.Length() == 0 || buffer.DeleteText({0, buffer.Length()}));
            EXPECT_TRUE(buffer.InsertText(0, u"older newer", 11));
            dialog::WhenShown([](HWND window) {
                dialog::SetText(window, IDC_FIND_WHAT, L"newer");
                dialog::SetText(window, IDC_REPLACE_WITH, L"x");
                dialog::Click(window, IDC_REPLACE_ALL);
                dialog::Cancel(window);
            });
        }
        view->ExecuteCommand(ViewCommand::Replace);
        const FailurePause pause;
        const std::u16string text(Editor().GetTextBuffer()->Content(), Editor().GetTextBuffer()->Length());
        EXPECT_TRUE(text == u"older newer" || text == u"older x") << testing::PrintToString(text);
        return text == u"older x";
    });
    EXPECT_GT(failures, 0u);
}

} // namespace
