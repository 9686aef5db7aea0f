#include "SettingsTestSupport.h"
#include "support/FailureInjection.h"

namespace {

// A string freed twice, or never, is reported by the address sanitizer's run of these tests.
class SettingsCopy : public SettingsTest {
protected:
    void SetUp() override {
        SettingsTest::SetUp();
        CopySettings(copy);
    }
    SettingsRecord copy;
};

TEST_F(SettingsCopy, HoldsEveryCell) {
    for (uint32_t i = 0; i < SettingCount; ++i) {
        const SettingDef& row = generalSettings.rows[i];
        SCOPED_TRACE(testing::PrintToString(Str(row.key)));
        if (row.type == SettingType::String) {
            EXPECT_EQ(copy.*row.cell.string, settings.*row.cell.string);
        } else {
            EXPECT_EQ(copy.*row.cell.number, settings.*row.cell.number);
        }
    }
}

TEST_F(SettingsCopy, CancelChangesNothing) {
    copy.FontSize = 33;
    copy.TextFg = 0x123456;
    EXPECT_TRUE(ReplaceString(copy.FontName, u"Other"));
    DropSettings(copy);
    EXPECT_EQ(settings.FontSize, 10u);
    EXPECT_EQ(settings.TextFg, 0u);
    EXPECT_EQ(Str(settings.FontName), u"Courier New");
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(copy.FontName, nullptr);
}

TEST_F(SettingsCopy, CancelOfAnUntouchedCopyKeepsTheLiveStrings) {
    DropSettings(copy);
    EXPECT_EQ(Str(settings.FontName), u"Courier New");
    EXPECT_EQ(Str(settings.QuickOpenPath), u".;%INCLUDE%");
}

TEST_F(SettingsCopy, OkMakesTheCopyLive) {
    copy.FontSize = 33;
    copy.BinBg = 0x123456;
    EXPECT_TRUE(ReplaceString(copy.FontName, u"Other"));
    EXPECT_TRUE(ReplaceString(copy.QuickOpenPath, u"path"));
    EXPECT_EQ(Str(settings.FontName), u"Courier New");
    AdoptSettings(copy);
    DropSettings(copy);
    EXPECT_EQ(settings.FontSize, 33u);
    EXPECT_EQ(settings.BinBg, 0x123456u);
    EXPECT_EQ(Str(settings.FontName), u"Other");
    EXPECT_EQ(Str(settings.QuickOpenPath), u"path");
    EXPECT_EQ(Str(settings.TextFileTypes).substr(0, 9), u"C++ Files");
}

TEST_F(SettingsCopy, OkRunsEveryHandlerInTableOrder) {
    AdoptSettings(copy);
    DropSettings(copy);
    const std::vector<SettingChange> expected = {SettingChange::Font,          SettingChange::Font,
                                                 SettingChange::Font,          SettingChange::MarginBrush,
                                                 SettingChange::BookmarkBrush, SettingChange::BackgroundBrush,
                                                 SettingChange::SelectionBrush};
    EXPECT_EQ(changes, expected);
}

TEST_F(SettingsCopy, HandlersSeeTheWholeNewRecord) {
    static bool complete;
    complete = true;
    SetDrawingRebuilder([](SettingChange) {
        complete = complete && settings.FontSize == 33 && settings.BinBg == 5;
        return true;
    });
    copy.FontSize = 33;
    copy.BinBg = 5;
    AdoptSettings(copy);
    DropSettings(copy);
    EXPECT_TRUE(complete);
}

TEST_F(SettingsCopy, FailingHandlerDoesNotStopTheOthers) {
    static uint32_t calls;
    calls = 0;
    SetDrawingRebuilder([](SettingChange) {
        ++calls;
        return false;
    });
    AdoptSettings(copy);
    DropSettings(copy);
    EXPECT_EQ(calls, 7u);
}

TEST_F(SettingsCopy, StringsMayBeReplacedAgainAndAgain) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(ReplaceString(copy.FontName, u"first"));
        EXPECT_TRUE(ReplaceString(copy.FontName, copy.FontName + 1));
        EXPECT_EQ(Str(copy.FontName), u"irst");
    }
    AdoptSettings(copy);
    EXPECT_TRUE(ReplaceString(copy.FontName, u"after")); // the live record holds the old one now
    EXPECT_EQ(Str(settings.FontName), u"irst");
    AdoptSettings(copy);
    DropSettings(copy);
    EXPECT_EQ(Str(settings.FontName), u"after");
}

TEST_F(SettingsCopy, NullMakesACellAbsent) {
    EXPECT_TRUE(ReplaceString(copy.FontName, nullptr));
    EXPECT_EQ(copy.FontName, nullptr);
    EXPECT_TRUE(ReplaceString(copy.QuickOpenPath, u"x"));
    EXPECT_TRUE(ReplaceString(copy.QuickOpenPath, nullptr));
    AdoptSettings(copy);
    DropSettings(copy);
    EXPECT_EQ(settings.FontName, nullptr);
    EXPECT_EQ(settings.QuickOpenPath, nullptr);
}

TEST_F(SettingsCopy, FailingAllocationLeavesTheCellAbsentAndTheLiveString) {
    DropSettings(copy);
    const uint64_t failures = FailEachAllocation([] {
        SettingsRecord attempt;
        CopySettings(attempt);
        const bool done = ReplaceString(attempt.FontName, u"new");
        EXPECT_EQ(done, attempt.FontName != nullptr);
        EXPECT_NE(settings.FontName, nullptr);
        DropSettings(attempt);
        return done;
    });
    EXPECT_EQ(failures, 1u);
}

TEST_F(SettingsCopy, AdoptingTheLiveRecordItselfKeepsIt) {
    DropSettings(copy);
    AdoptSettings(settings);
    EXPECT_EQ(Str(settings.FontName), u"Courier New");
}

std::vector<std::u16string> KeysOf(const SettingsChanges& changes) {
    std::vector<std::u16string> keys;
    for (uint32_t i = 0; i < SettingCount; ++i)
        if (changes.Holds(generalSettings.rows[i])) keys.push_back(Str(generalSettings.rows[i].key));
    return keys;
}

using Keys = std::vector<std::u16string>;

TEST_F(SettingsCopy, EveryCellThatDiffersIsAChange) {
    EXPECT_EQ(KeysOf(CompareSettings(settings, copy)), Keys());
    for (uint32_t i = 0; i < SettingCount; ++i) {
        const SettingDef& row = generalSettings.rows[i];
        SettingsRecord other = copy;
        std::u16string text = u"other";
        if (row.type == SettingType::String)
            other.*row.cell.string = text.data();
        else
            ++(other.*row.cell.number);
        EXPECT_EQ(KeysOf(CompareSettings(settings, other)), Keys{Str(row.key)});
        EXPECT_EQ(CompareSettings(settings, other).HoldsColour(), row.type == SettingType::Colour);
    }
    DropSettings(copy);
}

TEST_F(SettingsCopy, StringsAreComparedByWhatTheySay) {
    std::u16string same = u"Courier New";
    std::u16string empty;
    SettingsRecord other = copy;
    other.FontName = same.data();
    EXPECT_EQ(KeysOf(CompareSettings(settings, other)), Keys());
    other.FontName = nullptr;
    EXPECT_EQ(KeysOf(CompareSettings(settings, other)), Keys{u"FontName"});
    SettingsRecord absent = other;
    EXPECT_EQ(KeysOf(CompareSettings(absent, other)), Keys());
    other.FontName = empty.data();
    EXPECT_EQ(KeysOf(CompareSettings(absent, other)), Keys{u"FontName"});
    DropSettings(copy);
}

TEST_F(SettingsCopy, OkSaysWhatHasChanged) {
    copy.FontSize = 33;
    copy.BinBg = 0x123456;
    EXPECT_TRUE(ReplaceString(copy.QuickOpenPath, u"path"));
    EXPECT_TRUE(ReplaceString(copy.FontName, u"Courier New"));
    EXPECT_EQ(KeysOf(AdoptSettings(copy)), (Keys{u"FontSize", u"QuickOpenPath", u"BinBg"}));
    EXPECT_EQ(KeysOf(AdoptSettings(copy)), Keys());
    DropSettings(copy);
}

} // namespace
