#include "SettingsTestSupport.h"
#include "support/FailureInjection.h"

namespace {

// A string freed twice, or never, is reported by the address sanitizer's run of these tests.
class SettingsCopy : public SettingsTest {
protected:
    void SetUp() override {
        SettingsTest::SetUp();
        copy = settings;
    }
    SettingsRecord copy;
};

TEST_F(SettingsCopy, HoldsEveryCell) {
    for (uint32_t i = 0; i < SettingCount; ++i) {
        const SettingDef& row = generalSettings.rows[i];
        SCOPED_TRACE(testing::PrintToString(Str(row.key)));
        if (row.type == SettingType::String) {
            EXPECT_EQ(Str((copy.*row.cell.string).Text()), Str((settings.*row.cell.string).Text()));
        } else {
            EXPECT_EQ(copy.*row.cell.number, settings.*row.cell.number);
        }
    }
}

TEST_F(SettingsCopy, CancelChangesNothing) {
    copy.FontSize = 33;
    copy.TextFg = 0x123456;
    copy.FontName.Set(u"Other");
    EXPECT_EQ(settings.FontSize, 10u);
    EXPECT_EQ(settings.TextFg, 0u);
    EXPECT_EQ(Str(settings.FontName.Text()), u"Courier New");
    EXPECT_TRUE(changes.empty());
}

TEST_F(SettingsCopy, StringsOutliveTheLiveRecordThatTheyCameFrom) {
    settings.FontName.Set(u"Other");
    settings.QuickOpenPath.Set(nullptr);
    EXPECT_EQ(Str(copy.FontName.Text()), u"Courier New");
    SettingsRecord second = copy;
    copy = SettingsRecord();
    second = *&second;
    EXPECT_EQ(Str(second.FontName.Text()), u"Courier New");
    EXPECT_EQ(Str(second.QuickOpenPath.Text()), u".;%INCLUDE%");
}

TEST_F(SettingsCopy, CancelOfAnUntouchedCopyKeepsTheLiveStrings) {
    copy = SettingsRecord();
    EXPECT_EQ(Str(settings.FontName.Text()), u"Courier New");
    EXPECT_EQ(Str(settings.QuickOpenPath.Text()), u".;%INCLUDE%");
}

TEST_F(SettingsCopy, OkMakesTheCopyLive) {
    copy.FontSize = 33;
    copy.BinBg = 0x123456;
    copy.FontName.Set(u"Other");
    copy.QuickOpenPath.Set(u"path");
    EXPECT_EQ(Str(settings.FontName.Text()), u"Courier New");
    AdoptSettings(copy);
    EXPECT_EQ(settings.FontSize, 33u);
    EXPECT_EQ(settings.BinBg, 0x123456u);
    EXPECT_EQ(Str(settings.FontName.Text()), u"Other");
    EXPECT_EQ(Str(settings.QuickOpenPath.Text()), u"path");
    EXPECT_EQ(Str(settings.TextFileTypes.Text()).substr(0, 9), u"C++ Files");
}

TEST_F(SettingsCopy, OkRunsEveryHandlerInTableOrder) {
    AdoptSettings(copy);
    const std::vector<DrawingResource> expected = {DrawingResource::Font,          DrawingResource::Font,
                                                   DrawingResource::Font,          DrawingResource::MarginBrush,
                                                   DrawingResource::BookmarkBrush, DrawingResource::BackgroundBrush,
                                                   DrawingResource::SelectionBrush};
    EXPECT_EQ(changes, expected);
}

TEST_F(SettingsCopy, HandlersSeeTheWholeNewRecord) {
    static bool complete;
    complete = true;
    rebuild = [](DrawingResource) {
        complete = complete && settings.FontSize == 33 && settings.BinBg == 5;
        return true;
    };
    copy.FontSize = 33;
    copy.BinBg = 5;
    AdoptSettings(copy);
    EXPECT_TRUE(complete);
}

TEST_F(SettingsCopy, FailingHandlerDoesNotStopTheOthers) {
    static uint32_t calls;
    calls = 0;
    rebuild = [](DrawingResource) {
        ++calls;
        return false;
    };
    AdoptSettings(copy);
    EXPECT_EQ(calls, 7u);
}

TEST_F(SettingsCopy, StringsMayBeReplacedAgainAndAgain) {
    for (int i = 0; i < 3; ++i) {
        copy.FontName.Set(u"first");
        copy.FontName.Set(copy.FontName.Text() + 1);
        EXPECT_EQ(Str(copy.FontName.Text()), u"irst");
    }
    AdoptSettings(copy);
    copy.FontName.Set(u"after"); // the live record holds the old one now
    EXPECT_EQ(Str(settings.FontName.Text()), u"irst");
    AdoptSettings(copy);
    EXPECT_EQ(Str(settings.FontName.Text()), u"after");
}

TEST_F(SettingsCopy, NullMakesACellAbsent) {
    copy.FontName.Set(nullptr);
    EXPECT_EQ(copy.FontName.Text(), nullptr);
    copy.QuickOpenPath.Set(u"x");
    copy.QuickOpenPath.Set(nullptr);
    AdoptSettings(copy);
    EXPECT_EQ(settings.FontName.Text(), nullptr);
    EXPECT_EQ(settings.QuickOpenPath.Text(), nullptr);
}

TEST_F(SettingsCopy, FailingAllocationLeavesTheCellAbsentAndTheLiveString) {
    const uint64_t failures = FailEachAllocation([] {
        SettingsRecord attempt = settings;
        attempt.FontName.Set(u"new");
        const Char* const now = attempt.FontName.Text();
        EXPECT_TRUE(!now || Str(now) == u"new");
        EXPECT_EQ(Str(settings.FontName.Text()), u"Courier New");
        return now != nullptr;
    });
    EXPECT_EQ(failures, 2u);
}

TEST_F(SettingsCopy, AdoptingTheLiveRecordItselfKeepsIt) {
    AdoptSettings(settings);
    EXPECT_EQ(Str(settings.FontName.Text()), u"Courier New");
}

std::vector<std::u16string> KeysOf(const SettingsChanges& changes) {
    std::vector<std::u16string> keys;
    for (uint32_t i = 0; i < SettingCount; ++i)
        if (changes.Holds(i)) keys.push_back(Str(generalSettings.rows[i].key));
    return keys;
}

using Keys = std::vector<std::u16string>;

TEST_F(SettingsCopy, EveryCellThatDiffersIsAChange) {
    EXPECT_EQ(KeysOf(CompareSettings(settings, copy)), Keys());
    for (uint32_t i = 0; i < SettingCount; ++i) {
        const SettingDef& row = generalSettings.rows[i];
        SettingsRecord other = copy;
        if (row.type == SettingType::String)
            (other.*row.cell.string).Set(u"other");
        else
            ++(other.*row.cell.number);
        EXPECT_EQ(KeysOf(CompareSettings(settings, other)), Keys{Str(row.key)});
        EXPECT_EQ(CompareSettings(settings, other).HoldsColour(), row.type == SettingType::Colour);
    }
}

TEST_F(SettingsCopy, StringsAreComparedByWhatTheySay) {
    SettingsRecord other = copy;
    other.FontName.Set(u"Courier New");
    EXPECT_EQ(KeysOf(CompareSettings(settings, other)), Keys());
    other.FontName.Set(nullptr);
    EXPECT_EQ(KeysOf(CompareSettings(settings, other)), Keys{u"FontName"});
    SettingsRecord absent = other;
    EXPECT_EQ(KeysOf(CompareSettings(absent, other)), Keys());
    other.FontName.Set(u"");
    EXPECT_EQ(KeysOf(CompareSettings(absent, other)), Keys{u"FontName"});
}

TEST_F(SettingsCopy, OkSaysWhatHasChanged) {
    copy.FontSize = 33;
    copy.BinBg = 0x123456;
    copy.QuickOpenPath.Set(u"path");
    copy.FontName.Set(u"Courier New");
    EXPECT_EQ(KeysOf(AdoptSettings(copy)), (Keys{u"FontSize", u"QuickOpenPath", u"BinBg"}));
    EXPECT_EQ(KeysOf(AdoptSettings(copy)), Keys());
}

} // namespace
