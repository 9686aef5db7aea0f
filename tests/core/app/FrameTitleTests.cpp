#include "app/FrameTitle.h"
#include "base/Platform.h"
#include "core/app/FakeFrame.h"
#include "support/FailureInjection.h"

#include <gtest/gtest.h>

namespace {

class FrameTitleTest : public ::testing::Test {
protected:
    ~FrameTitleTest() override { document->Release(); }
    std::u16string Title(bool recording = false) {
        WString title;
        EXPECT_TRUE(BuildTitle(document, recording, title));
        return Str(title);
    }
    std::u16string Item(uint32_t index) {
        WString item;
        EXPECT_TRUE(BuildWindowItem(index, *document, item));
        return Str(item);
    }

    FakeDocument* document = FakeDocument::WithFile(u"C:\\a.c");
};

TEST_F(FrameTitleTest, WithoutADocumentItIsOrvane) {
    WString title;
    EXPECT_TRUE(BuildTitle(nullptr, false, title));
    EXPECT_EQ(Str(title), u"Orvane");
    EXPECT_TRUE(BuildTitle(nullptr, true, title));
    EXPECT_EQ(Str(title), u"Recording - Orvane");
    EXPECT_EQ(std::u16string(NoDocumentsItem), u"< no open documents >");
}

TEST_F(FrameTitleTest, NamesTheDocument) {
    EXPECT_EQ(Title(), u"C:\\a.c - Orvane");
    document->path.clear();
    document->title = u"Untitled1";
    EXPECT_EQ(Title(), u"Untitled1 - Orvane");
}

TEST_F(FrameTitleTest, MarksModifiedRunningAndRecording) {
    document->modified = true;
    EXPECT_EQ(Title(), u"C:\\a.c* - Orvane");
    document->isOutput = document->running = true;
    EXPECT_EQ(Title(true), u"Recording - C:\\a.c* *Running* - Orvane");
    document->modified = false;
    EXPECT_EQ(Title(), u"C:\\a.c *Running* - Orvane");
    document->running = false;
    EXPECT_EQ(Title(), u"C:\\a.c - Orvane");
}

TEST_F(FrameTitleTest, WindowItemsCarryPositionNameAndMark) {
    EXPECT_EQ(Item(0), u"&1 C:\\a.c");
    document->modified = true;
    EXPECT_EQ(Item(1), u"&2 C:\\a.c*");
    EXPECT_EQ(Item(9), u"&10 C:\\a.c*");
}

TEST_F(FrameTitleTest, OddNamesAreShownWhole) {
    document->path = u"C:\\R&D %s 100%.c";
    EXPECT_EQ(Title(), u"C:\\R&D %s 100%.c - Orvane");
    EXPECT_EQ(Item(0), u"&1 C:\\R&&D %s 100%.c");
    document->path = std::u16string(32000, u'x');
    EXPECT_EQ(Item(0).size(), 32003u);
}

TEST_F(FrameTitleTest, StatusShowsTheDirectoryWhileTheCommandWindowIsShown) {
    WString directory;
    ASSERT_TRUE(Platform::CurrentDirectory(directory));
    WString text;
    EXPECT_TRUE(BuildStatusText(true, false, text));
    EXPECT_EQ(Str(text), Str(directory));
    EXPECT_TRUE(BuildStatusText(true, true, text));
    EXPECT_EQ(Str(text), Str(directory) + u" [Console]");
    EXPECT_TRUE(BuildStatusText(false, true, text));
    EXPECT_EQ(Str(text), u"");
}

TEST_F(FrameTitleTest, TextsAreUnchangedWithoutMemory) {
    document->modified = document->isOutput = document->running = true;
    const auto unchanged = [](auto build) {
        return FailEachAllocation([&] {
            WString text;
            {
                const FailurePause pause;
                EXPECT_TRUE(text.Assign(u"old"));
            }
            const bool built = build(text);
            const FailurePause pause;
            EXPECT_EQ(Str(text) == u"old", !built);
            return built;
        });
    };
    EXPECT_GT(unchanged([&](WString& text) { return BuildTitle(document, true, text); }), 1u);
    EXPECT_GT(unchanged([&](WString& text) { return BuildStatusText(true, true, text); }), 0u);
    EXPECT_GT(unchanged([&](WString& text) { return BuildWindowItem(3, *document, text); }), 1u);
}

} // namespace
