#include "CallCounter.h"
#include "TextViewTest.h"
#include "support/FakeSurface.h"
#include "viewbase/win32/Clipboard.h"

// The system's clipboard under a text view, with other programs that misbehave.

namespace {

class ClipboardTest : public TextViewTest {
protected:
    void TearDown() override {
        Take();
        EmptyClipboard();
        CloseClipboard();
        TextViewTest::TearDown();
    }
    // Opens the clipboard, which a program outside may hold for a moment.
    void Take() const {
        for (int i = 0; i < 500 && !OpenClipboard(frame); ++i) Sleep(10);
    }
    void ShowText(const std::u16string& text) {
        Show(text);
        view->SetHost(&host);
    }
    // Puts a block of exactly these bytes on the clipboard.
    void PutBlock(const void* bytes, size_t count) const {
        Take();
        ASSERT_TRUE(EmptyClipboard());
        const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, count);
        ASSERT_NE(block, nullptr);
        memcpy(GlobalLock(block), bytes, count);
        GlobalUnlock(block);
        ASSERT_NE(SetClipboardData(CF_UNICODETEXT, block), nullptr);
        ASSERT_TRUE(CloseClipboard());
    }
    void PutText(const std::u16string& text) const { PutBlock(text.c_str(), (text.size() + 1) * sizeof(Char)); }
    std::u16string Held(UINT format = CF_UNICODETEXT) const {
        Take();
        std::u16string text;
        if (const HANDLE block = GetClipboardData(format)) {
            text.assign(static_cast<const Char*>(GlobalLock(block)), GlobalSize(block) / sizeof(Char));
            GlobalUnlock(block);
        }
        CloseClipboard();
        return text;
    }

    FakeHost host;
};

// Another program that holds the clipboard: a thread of its own, until it is asked to let go or, when a
// time is given, until that has passed.
class Holder {
public:
    explicit Holder(DWORD milliseconds = INFINITE) : patience(milliseconds) {
        thread = CreateThread(nullptr, 0, Hold, this, 0, nullptr);
        WaitForSingleObject(holding, INFINITE);
    }
    ~Holder() {
        SetEvent(done);
        WaitForSingleObject(thread, INFINITE);
        for (const HANDLE handle : {thread, holding, done}) CloseHandle(handle);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    bool opened = false;

private:
    static DWORD WINAPI Hold(void* parameter) {
        auto& self = *static_cast<Holder*>(parameter);
        self.opened = OpenClipboard(nullptr) != 0;
        SetEvent(self.holding);
        WaitForSingleObject(self.done, self.patience);
        if (self.opened) CloseClipboard();
        return 0;
    }

    DWORD patience;
    HANDLE holding = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE thread = nullptr;
};

TEST_F(ClipboardTest, ACopyEndsWithATerminator) {
    ShowText(u"ab\ncd");
    view->ExecuteCommand(ViewCommand::SelectAll);
    view->ExecuteCommand(ViewCommand::Copy);
    // A block may be longer than asked for.
    EXPECT_EQ(Held().substr(0, 7), std::u16string(u"ab\r\ncd\0", 7));
    EXPECT_TRUE(Held(Clipboard::WholeLineFormat()).empty());
}

TEST_F(ClipboardTest, AWholeLineIsThereTwice) {
    ShowText(u"ab\ncd");
    view->ExecuteCommand(ViewCommand::Copy);
    EXPECT_EQ(Held().substr(0, 5), std::u16string(u"ab\r\n\0", 5));
    EXPECT_EQ(Held(Clipboard::WholeLineFormat()).substr(0, 5), std::u16string(u"ab\r\n\0", 5));
}

TEST_F(ClipboardTest, TextWithoutATerminatorEndsWithItsBlock) {
    ShowText(u"");
    const std::u16string text(64, u'x');
    PutBlock(text.data(), text.size() * sizeof(Char));
    view->ExecuteCommand(ViewCommand::Paste);
    // Wine ends such a text itself, by its last character.
    EXPECT_GE(document->Text().size(), text.size() - 1);
    EXPECT_EQ(document->Text(), text.substr(0, document->Text().size()));
}

TEST_F(ClipboardTest, WithoutTextNothingIsPasted) {
    ShowText(u"ab");
    Take();
    ASSERT_TRUE(EmptyClipboard());
    ASSERT_TRUE(CloseClipboard());
    view->ExecuteCommand(ViewCommand::SelectAll);
    view->ExecuteCommand(ViewCommand::Paste);
    EXPECT_EQ(document->Text(), u"ab");
    EXPECT_EQ(document->UndoSteps(), 0u);
}

TEST_F(ClipboardTest, AClipboardThatIsSoonGivenBackIsWaitedFor) {
    ShowText(u"ab");
    view->ExecuteCommand(ViewCommand::SelectAll);
    PutText(u"old");
    {
        const Holder other(30);
        ASSERT_TRUE(other.opened);
        view->ExecuteCommand(ViewCommand::Copy);
    }
    EXPECT_EQ(Held().substr(0, 2), u"ab");
    PutText(u"xyz");
    {
        const Holder other(30);
        ASSERT_TRUE(other.opened);
        view->ExecuteCommand(ViewCommand::Paste);
    }
    EXPECT_EQ(document->Text(), u"xyz");
}

TEST_F(ClipboardTest, AClipboardThatStaysTakenIsGivenUpSilently) {
    ShowText(u"ab");
    view->ExecuteCommand(ViewCommand::SelectAll);
    PutText(u"old");
    {
        const Holder other;
        ASSERT_TRUE(other.opened);
        view->ExecuteCommand(ViewCommand::Copy);
        view->ExecuteCommand(ViewCommand::Paste);
    }
    EXPECT_EQ(Held().substr(0, 4), std::u16string(u"old\0", 4));
    EXPECT_EQ(document->Text(), u"ab");
    EXPECT_TRUE(host.messages.empty());
}

HANDLE WINAPI RefuseBlock(UINT, HANDLE) { return nullptr; }

TEST_F(ClipboardTest, ARefusedBlockIsReported) {
    ShowText(u"ab");
    view->ExecuteCommand(ViewCommand::SelectAll);
    const ReplacedImport refused("SetClipboardData", reinterpret_cast<void*>(RefuseBlock));
    ASSERT_TRUE(refused.IsImported());
    view->ExecuteCommand(ViewCommand::Copy);
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0], u"Failed copying to clipboard");
    EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
}

// How much there is to copy decides which call of the system fails.

TEST_F(ClipboardTest, WhatCannotBeLockedEndsTheCopy) {
    const ClipboardItem items[] = {{ClipboardFormat::UnicodeText, u"", 0}, {ClipboardFormat::WholeLine, u"ab", 6}};
    EXPECT_TRUE(Clipboard::Write(frame, items, 2));
    EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
    EXPECT_FALSE(IsClipboardFormatAvailable(Clipboard::WholeLineFormat()));
}

TEST_F(ClipboardTest, WithoutMemoryTheCopyStopsAndTheClipboardStaysOpen) {
    const ClipboardItem items[] = {{ClipboardFormat::UnicodeText, u"", SIZE_MAX / 4},
                                   {ClipboardFormat::WholeLine, u"ab", 6}};
    EXPECT_TRUE(Clipboard::Write(frame, items, 2));
    EXPECT_EQ(GetOpenClipboardWindow(), frame);
    EXPECT_FALSE(IsClipboardFormatAvailable(Clipboard::WholeLineFormat()));
    EXPECT_TRUE(CloseClipboard());
}

} // namespace
