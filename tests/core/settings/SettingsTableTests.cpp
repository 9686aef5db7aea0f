#include "SettingsTestSupport.h"

#include <set>

namespace {

enum class Handler { None, Font, Margin, Bookmark, Background, Selection };

constexpr Char FileTypes[] =
    u"C++ Files (*.cpp;*.c;*.cxx;*.h;*.hxx)|*.cpp;*.c;*.cxx;*.h;*.hxx|Text Files (*.txt)|*.txt|HTML Files "
    u"(*.htm;*.html)|*.htm;*.html|XML Files (*.xml;*.xsl)|*.xml;*.xsl|All Files (*.*)|*.*";

struct ExpectedRow {
    const Char* key;
    SettingType type;
    const Char* value; // as it is written in the file
    const Char* fallback;
    Handler handler;
    const void* cell;
};

const ExpectedRow expectedRows[] = {
    {u"FontName", SettingType::String, u"Courier New", u"", Handler::Font, &settings.FontName},
    {u"FontSize", SettingType::Int, u"10", u"", Handler::Font, &settings.FontSize},
    {u"FontBold", SettingType::Int, u"0", u"", Handler::Font, &settings.FontBold},
    {u"CaretWidth", SettingType::Int, u"2", u"", Handler::None, &settings.CaretWidth},
    {u"ShowWhitespace", SettingType::Int, u"0", u"", Handler::None, &settings.ShowWhitespace},
    {u"ReplaceTabs", SettingType::Int, u"1", u"", Handler::None, &settings.ReplaceTabs},
    {u"SpacesPerTab", SettingType::Int, u"4", u"", Handler::None, &settings.SpacesPerTab},
    {u"PasteKeepSelection", SettingType::Int, u"1", u"", Handler::None, &settings.PasteKeepSelection},
    {u"SpaceColor", SettingType::Colour, u"#008080", u"", Handler::None, &settings.SpaceColor},
    {u"MarginWidth", SettingType::Int, u"20", u"", Handler::None, &settings.MarginWidth},
    {u"MarginColor", SettingType::Colour, u"#dcdcdc", u"", Handler::Margin, &settings.MarginColor},
    {u"BookmarkColor", SettingType::Colour, u"#00ffff", u"", Handler::Bookmark, &settings.BookmarkColor},
    {u"GuideColor", SettingType::Colour, u"#000000", u"MarginColor", Handler::None, &settings.GuideColor},
    {u"ColumnGuide", SettingType::Int, u"80", u"", Handler::None, &settings.ColumnGuide},
    {u"IndentGuide", SettingType::Int, u"1", u"", Handler::None, &settings.IndentGuide},
    {u"QuickOpenPath", SettingType::String, u".;%INCLUDE%", u"", Handler::None, &settings.QuickOpenPath},
    {u"TextFileTypes", SettingType::String, FileTypes, u"", Handler::None, &settings.TextFileTypes},
    {u"ShowLineNumbers", SettingType::Int, u"1", u"", Handler::None, &settings.ShowLineNumbers},
    {u"VarWidthLineNumbers", SettingType::Int, u"0", u"", Handler::None, &settings.VarWidthLineNumbers},
    {u"RenderType", SettingType::Int, u"0", u"", Handler::None, &settings.RenderType},
    {u"TextFg", SettingType::Colour, u"#000000", u"", Handler::None, &settings.TextFg},
    {u"TextBg", SettingType::Colour, u"#ffffff", u"", Handler::Background, &settings.TextBg},
    {u"SelFg", SettingType::Colour, u"#ffffff", u"", Handler::None, &settings.SelFg},
    {u"SelBg", SettingType::Colour, u"#000000", u"", Handler::Selection, &settings.SelBg},
    {u"LineNumFg", SettingType::Colour, u"#000000", u"", Handler::None, &settings.LineNumFg},
    {u"LineNumBg", SettingType::Colour, u"#ffffdc", u"", Handler::None, &settings.LineNumBg},
    {u"CommentFg", SettingType::Colour, u"#008000", u"", Handler::None, &settings.CommentFg},
    {u"CommentBg", SettingType::Colour, u"#e6e6e6", u"TextBg", Handler::None, &settings.CommentBg},
    {u"LongCommentFg", SettingType::Colour, u"#008000", u"", Handler::None, &settings.LongCommentFg},
    {u"LongCommentBg", SettingType::Colour, u"#e6e6e6", u"TextBg", Handler::None, &settings.LongCommentBg},
    {u"StringFg", SettingType::Colour, u"#ff0000", u"", Handler::None, &settings.StringFg},
    {u"StringBg", SettingType::Colour, u"#ffffff", u"TextBg", Handler::None, &settings.StringBg},
    {u"KeywordFg", SettingType::Colour, u"#0000ff", u"", Handler::None, &settings.KeywordFg},
    {u"KeywordBg", SettingType::Colour, u"#ffffff", u"TextBg", Handler::None, &settings.KeywordBg},
    {u"NumberFg", SettingType::Colour, u"#800000", u"", Handler::None, &settings.NumberFg},
    {u"NumberBg", SettingType::Colour, u"#ffffff", u"TextBg", Handler::None, &settings.NumberBg},
    {u"BraceMatchFg", SettingType::Colour, u"#000000", u"", Handler::None, &settings.BraceMatchFg},
    {u"BraceMatchBg", SettingType::Colour, u"#ffff00", u"", Handler::None, &settings.BraceMatchBg},
    {u"HtmlTagFg", SettingType::Colour, u"#0000ff", u"", Handler::None, &settings.HtmlTagFg},
    {u"HtmlTagBg", SettingType::Colour, u"#ffffff", u"TextBg", Handler::None, &settings.HtmlTagBg},
    {u"HtmlAttrFg", SettingType::Colour, u"#800080", u"", Handler::None, &settings.HtmlAttrFg},
    {u"HtmlAttrBg", SettingType::Colour, u"#ffffff", u"TextBg", Handler::None, &settings.HtmlAttrBg},
    {u"HtmlAttrValueFg", SettingType::Colour, u"#ff00ff", u"", Handler::None, &settings.HtmlAttrValueFg},
    {u"HtmlAttrValueBg", SettingType::Colour, u"#ffffff", u"TextBg", Handler::None, &settings.HtmlAttrValueBg},
    {u"HtmlAttrQuotedValueFg", SettingType::Colour, u"#ff0000", u"", Handler::None, &settings.HtmlAttrQuotedValueFg},
    {u"HtmlAttrQuotedValueBg", SettingType::Colour, u"#ffffff", u"TextBg", Handler::None,
     &settings.HtmlAttrQuotedValueBg},
    {u"HtmlCommentFg", SettingType::Colour, u"#008000", u"", Handler::None, &settings.HtmlCommentFg},
    {u"HtmlCommentBg", SettingType::Colour, u"#e6e6e6", u"TextBg", Handler::None, &settings.HtmlCommentBg},
    {u"HtmlPunctFg", SettingType::Colour, u"#0000ff", u"", Handler::None, &settings.HtmlPunctFg},
    {u"HtmlPunctBg", SettingType::Colour, u"#ffffff", u"TextBg", Handler::None, &settings.HtmlPunctBg},
    {u"BinFg", SettingType::Colour, u"#ff0000", u"", Handler::None, &settings.BinFg},
    {u"BinBg", SettingType::Colour, u"#ffffff", u"TextBg", Handler::None, &settings.BinBg},
};
static_assert(std::size(expectedRows) == SettingCount);

// The record's own order, which is not that of the table.
#define CELL(name)                                                                                                     \
    { u"" #name, offsetof(SettingsRecord, name), sizeof(SettingsRecord::name) }
#define PAIR(name) CELL(name##Fg), CELL(name##Bg)
constexpr struct {
    const Char* name;
    size_t offset;
    size_t size;
} cells[] = {
    CELL(ReplaceTabs),
    CELL(SpacesPerTab),
    CELL(ShowWhitespace),
    CELL(PasteKeepSelection),
    CELL(ColumnGuide),
    CELL(IndentGuide),
    CELL(QuickOpenPath),
    CELL(TextFileTypes),
    CELL(FontName),
    CELL(FontSize),
    CELL(FontBold),
    CELL(MarginWidth),
    CELL(CaretWidth),
    CELL(ShowLineNumbers),
    CELL(VarWidthLineNumbers),
    CELL(RenderType),
    CELL(TextFg),
    CELL(TextBg),
    CELL(SelFg),
    CELL(SelBg),
    CELL(LineNumFg),
    CELL(LineNumBg),
    CELL(MarginColor),
    CELL(SpaceColor),
    CELL(BookmarkColor),
    CELL(GuideColor),
    PAIR(Comment),
    PAIR(LongComment),
    PAIR(String),
    PAIR(Keyword),
    PAIR(Number),
    PAIR(BraceMatch),
    PAIR(HtmlTag),
    PAIR(HtmlAttr),
    PAIR(HtmlAttrValue),
    PAIR(HtmlAttrQuotedValue),
    PAIR(HtmlComment),
    PAIR(HtmlPunct),
    PAIR(Bin),
};
#undef PAIR
#undef CELL

constexpr bool CellsFollowOneAnother() {
    size_t end = 0;
    for (const auto& cell : cells) {
        // Nothing lies between two cells but what aligns the strings.
        if (cell.offset != (end + cell.size - 1) / cell.size * cell.size) return false;
        end = cell.offset + cell.size;
    }
    return sizeof(SettingsRecord) - end < alignof(SettingsRecord);
}
static_assert(std::size(cells) == SettingCount);
static_assert(CellsFollowOneAnother(), "the record holds exactly these cells, in this order");

TEST(SettingsTable, HasOneSectionOfFiftyTwoRows) {
    EXPECT_EQ(Str(generalSettings.name), u"General");
    EXPECT_EQ(generalSettings.count, 52u);
}

TEST(SettingsTable, RowsAreInTableOrder) {
    for (uint32_t i = 0; i < SettingCount; ++i) {
        const SettingDef& row = generalSettings.rows[i];
        const ExpectedRow& expected = expectedRows[i];
        SCOPED_TRACE(testing::PrintToString(Str(expected.key)));
        EXPECT_EQ(Str(row.key), Str(expected.key));
        EXPECT_EQ(row.type, expected.type);
        EXPECT_EQ(LiveCell(row), expected.cell);
        if (row.type == SettingType::Int) {
            EXPECT_EQ(row.initial.number, Text::ParseDecimal(expected.value));
        }
        if (row.type == SettingType::Colour) {
            EXPECT_EQ(row.initial.number, ParseColour(expected.value));
        }
        if (row.type == SettingType::String) {
            EXPECT_EQ(Str(row.initial.string), Str(expected.value));
        }
        const SettingDef* fallback = *expected.fallback ? FindSetting(expected.fallback) : nullptr;
        EXPECT_EQ(row.fallback, fallback ? fallback->cell.number : nullptr);
        EXPECT_EQ(row.onChange != nullptr, expected.handler != Handler::None);
    }
}

TEST(SettingsTable, EveryCellHasOneRow) {
    std::set<const void*> seen;
    for (uint32_t i = 0; i < SettingCount; ++i) seen.insert(LiveCell(generalSettings.rows[i]));
    EXPECT_EQ(seen.size(), SettingCount);
}

TEST(SettingsTable, TypesHaveTheirNumbers) {
    EXPECT_EQ(static_cast<uint32_t>(SettingType::Int), 0u);
    EXPECT_EQ(static_cast<uint32_t>(SettingType::Colour), 1u);
    EXPECT_EQ(static_cast<uint32_t>(SettingType::String), 2u);
}

class SettingsHandlers : public SettingsTest {};

TEST_F(SettingsHandlers, EachRowAsksForItsOwnChange) {
    for (const ExpectedRow& expected : expectedRows) {
        SCOPED_TRACE(testing::PrintToString(Str(expected.key)));
        changes.clear();
        SetOption(nullptr, expected.key, u"1");
        std::vector<DrawingResource> wanted;
        if (expected.handler != Handler::None) {
            wanted = {static_cast<DrawingResource>(static_cast<uint32_t>(expected.handler) - 1)};
        }
        EXPECT_EQ(changes, wanted);
    }
}

TEST_F(SettingsHandlers, ReportWhatTheDrawingHalfAnswers) {
    EXPECT_TRUE(FindSetting(u"FontName")->onChange());
    rebuild = [](DrawingResource) { return false; };
    EXPECT_FALSE(FindSetting(u"FontName")->onChange());
}

} // namespace
