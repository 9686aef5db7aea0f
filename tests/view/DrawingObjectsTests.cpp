#include "settings/win32/DrawingObjects.h"

#include "CallCounter.h"
#include "base/win32/Handles.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"

#include <gtest/gtest.h>
#include <string>

namespace {

class DrawingObjectsTest : public ::testing::Test {
protected:
    void SetUp() override {
        DrawingObjects::RebuildForDpi(96);
        LoadSettings(IniFile());
        notified = 0;
        DrawingObjects::SetMetricsListener([] { ++notified; });
    }
    void TearDown() override {
        DrawingObjects::SetMetricsListener(nullptr);
        DrawingObjects::RebuildForDpi(96);
        DrawingObjects::Release();
        ReleaseSettings();
    }

    static inline uint32_t notified;

    static LOGFONTW Font() {
        LOGFONTW font = {};
        EXPECT_NE(GetObjectW(DrawingObjects::EditorFont(), sizeof(font), &font), 0);
        return font;
    }

    static Colour ColourOf(HBRUSH brush) {
        LOGBRUSH description = {};
        EXPECT_NE(GetObjectW(brush, sizeof(description), &description), 0);
        EXPECT_EQ(description.lbStyle, static_cast<UINT>(BS_SOLID));
        return description.lbColor;
    }

    static Colour DotPixel(int x, int y) {
        const WindowDc screen(nullptr);
        const MemoryDc memory(screen.Get());
        const SelectedObject selected(memory.Get(), DrawingObjects::SpaceDot());
        return GetPixel(memory.Get(), x, y);
    }
};

TEST_F(DrawingObjectsTest, FontHasTheFixedParameters) {
    const LOGFONTW font = Font();
    EXPECT_EQ(font.lfHeight, -13);
    EXPECT_EQ(font.lfWidth, 0);
    EXPECT_EQ(font.lfEscapement, 0);
    EXPECT_EQ(font.lfOrientation, 0);
    EXPECT_EQ(font.lfWeight, 400);
    EXPECT_EQ(font.lfItalic, 0);
    EXPECT_EQ(font.lfUnderline, 0);
    EXPECT_EQ(font.lfStrikeOut, 0);
    EXPECT_EQ(font.lfCharSet, 0);
    EXPECT_EQ(font.lfOutPrecision, 2);
    EXPECT_EQ(font.lfClipPrecision, 1);
    EXPECT_EQ(font.lfQuality, 2);
    EXPECT_EQ(font.lfPitchAndFamily, 0);
    EXPECT_EQ(std::wstring(font.lfFaceName), L"Courier New");
}

TEST_F(DrawingObjectsTest, EachFontSettingRebuildsTheFont) {
    SetOption(nullptr, u"FontSize", u"18");
    EXPECT_EQ(Font().lfHeight, -24);
    SetOption(nullptr, u"FontBold", u"2");
    EXPECT_EQ(Font().lfWeight, 700);
    SetOption(nullptr, u"FontName", u"Arial");
    EXPECT_EQ(std::wstring(Font().lfFaceName), L"Arial");
    EXPECT_EQ(notified, 3u);
    SetFontSize(9);
    EXPECT_EQ(Font().lfHeight, -12);
    EXPECT_EQ(notified, 4u);
}

TEST_F(DrawingObjectsTest, RebuildingDestroysThePreviousObjects) {
    const HFONT font = DrawingObjects::EditorFont();
    const HBITMAP dot = DrawingObjects::SpaceDot();
    const HBRUSH brush = DrawingObjects::MarginBrush();
    SetFontSize(20);
    SetOption(nullptr, u"MarginColor", u"#112233");
    EXPECT_EQ(GetObjectType(font), 0u);
    EXPECT_EQ(GetObjectType(dot), 0u);
    EXPECT_EQ(GetObjectType(brush), 0u);
    EXPECT_EQ(GetObjectType(DrawingObjects::EditorFont()), static_cast<DWORD>(OBJ_FONT));
}

TEST_F(DrawingObjectsTest, MeasuresAreThoseOfTheFont) {
    SetFontSize(30);
    const WindowDc screen(nullptr);
    const MemoryDc memory(screen.Get());
    const SelectedObject selected(memory.Get(), DrawingObjects::EditorFont());
    TEXTMETRICW metrics = {};
    GetTextMetricsW(memory.Get(), &metrics);
    EXPECT_EQ(DrawingObjects::LineHeight(), metrics.tmHeight);
    EXPECT_EQ(DrawingObjects::AverageWidth(), metrics.tmAveCharWidth);
    RECT space = {};
    DrawTextW(memory.Get(), L" ", 1, &space, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    EXPECT_EQ(DrawingObjects::SpaceWidth(), space.right);
    EXPECT_GT(space.right, 1);
}

TEST_F(DrawingObjectsTest, SizesNoScreenCanShowStillGiveUsableMeasures) {
    for (const Char* size : {u"0", u"1", u"4294967295", u"2147483648"}) {
        SetOption(nullptr, u"FontSize", size);
        EXPECT_GE(DrawingObjects::LineHeight(), 1);
        EXPECT_GE(DrawingObjects::AverageWidth(), 1);
        EXPECT_GE(DrawingObjects::SpaceWidth(), 1);
        EXPECT_LT(DrawingObjects::LineHeight(), 2 * MaxFontPixels);
    }
}

TEST_F(DrawingObjectsTest, AbsentOrOverlongFaceNameStillGivesAFont) {
    SetOption(nullptr, u"FontName", nullptr);
    EXPECT_EQ(std::wstring(Font().lfFaceName), L"");
    const std::u16string overlong(100, u'x');
    SetOption(nullptr, u"FontName", overlong.c_str());
    EXPECT_EQ(std::wstring(Font().lfFaceName), std::wstring(31, L'x'));
    EXPECT_GE(DrawingObjects::LineHeight(), 1);
}

TEST_F(DrawingObjectsTest, BrushesFollowTheirSettings) {
    EXPECT_EQ(ColourOf(DrawingObjects::MarginBrush()), 0xDCDCDCu);
    EXPECT_EQ(ColourOf(DrawingObjects::BookmarkBrush()), 0xFFFF00u);
    EXPECT_EQ(ColourOf(DrawingObjects::BackgroundBrush()), 0xFFFFFFu);
    EXPECT_EQ(ColourOf(DrawingObjects::SelectionBrush()), 0u);
    SetOption(nullptr, u"MarginColor", u"#010203");
    SetOption(nullptr, u"BookmarkColor", u"#040506");
    SetOption(nullptr, u"TextBg", u"#070809");
    SetOption(nullptr, u"SelBg", u"#0a0b0c");
    EXPECT_EQ(ColourOf(DrawingObjects::MarginBrush()), 0x030201u);
    EXPECT_EQ(ColourOf(DrawingObjects::BookmarkBrush()), 0x060504u);
    EXPECT_EQ(ColourOf(DrawingObjects::BackgroundBrush()), 0x090807u);
    EXPECT_EQ(ColourOf(DrawingObjects::SelectionBrush()), 0x0C0B0Au);
    EXPECT_EQ(notified, 0u);
}

TEST_F(DrawingObjectsTest, DotIsFilledWithTheSpaceColourOnTheNextRebuildOfTheFont) {
    BITMAP bitmap = {};
    ASSERT_NE(GetObjectW(DrawingObjects::SpaceDot(), sizeof(bitmap), &bitmap), 0);
    EXPECT_EQ(bitmap.bmWidth, 2);
    EXPECT_EQ(bitmap.bmHeight, 2);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(DotPixel(i % 2, i / 2), 0x808000u);
    SetOption(nullptr, u"SpaceColor", u"#ff0000");
    EXPECT_EQ(DotPixel(0, 0), 0x808000u);
    SetFontSize(11);
    EXPECT_EQ(DotPixel(1, 1), 0x0000FFu);
}

TEST_F(DrawingObjectsTest, AnotherScreenResolutionRebuildsTheFontOnly) {
    const uint32_t generation = DrawingObjects::FontGeneration();
    const HBRUSH brush = DrawingObjects::MarginBrush();
    EXPECT_TRUE(DrawingObjects::RebuildForDpi(144));
    EXPECT_EQ(DrawingObjects::Dpi(), 144u);
    EXPECT_EQ(Font().lfHeight, -20);
    EXPECT_EQ(notified, 1u);
    EXPECT_NE(DrawingObjects::FontGeneration(), generation);
    EXPECT_EQ(DrawingObjects::MarginBrush(), brush);
    EXPECT_TRUE(DrawingObjects::RebuildForDpi(144));
    EXPECT_TRUE(DrawingObjects::RebuildForDpi(0));
    EXPECT_EQ(notified, 1u);
    EXPECT_EQ(DrawingObjects::Dpi(), 144u);
}

TEST_F(DrawingObjectsTest, AFontThatCouldNotBeMadeIsTriedAgain) {
    const auto fail = [](const LOGFONTW*) -> HFONT { return nullptr; };
    {
        const ReplacedImport import("CreateFontIndirectW",
                                    reinterpret_cast<void*>(static_cast<decltype(&CreateFontIndirectW)>(fail)));
        ASSERT_TRUE(import.IsImported());
        EXPECT_FALSE(DrawingObjects::RebuildForDpi(144));
        EXPECT_EQ(Font().lfHeight, -13);
        EXPECT_FALSE(DrawingObjects::RebuildForDpi(144));
    }
    EXPECT_TRUE(DrawingObjects::RebuildForDpi(144));
    EXPECT_EQ(Font().lfHeight, -20);
    EXPECT_EQ(notified, 1u);
    EXPECT_TRUE(DrawingObjects::RebuildForDpi(144));
    EXPECT_EQ(notified, 1u);
}

TEST_F(DrawingObjectsTest, ReleaseDestroysAndTheNextLoadBuildsAgain) {
    const HFONT font = DrawingObjects::EditorFont();
    DrawingObjects::Release();
    EXPECT_EQ(GetObjectType(font), 0u);
    EXPECT_EQ(DrawingObjects::EditorFont(), nullptr);
    EXPECT_EQ(DrawingObjects::SpaceDot(), nullptr);
    EXPECT_EQ(DrawingObjects::SelectionBrush(), nullptr);
    ReleaseSettings();
    LoadSettings(IniFile());
    EXPECT_EQ(Font().lfHeight, -13);
    EXPECT_NE(DrawingObjects::SelectionBrush(), nullptr);
}

} // namespace
