#include "settings/Settings.h"

SettingsRecord settings;

namespace {

DrawingRebuilder drawingRebuilder = nullptr;

template <SettingChange Change> bool Rebuild() { return drawingRebuilder ? drawingRebuilder(Change) : true; }

constexpr auto Font = Rebuild<SettingChange::Font>;
constexpr auto MarginBrush = Rebuild<SettingChange::MarginBrush>;
constexpr auto BookmarkBrush = Rebuild<SettingChange::BookmarkBrush>;
constexpr auto BackgroundBrush = Rebuild<SettingChange::BackgroundBrush>;
constexpr auto SelectionBrush = Rebuild<SettingChange::SelectionBrush>;

// Red, green and blue as they are written in the file.
constexpr Colour Hex(uint32_t written) { return Rgb(written >> 16, written >> 8 & 0xFF, written & 0xFF); }

constexpr SettingDef Number(const Char* key, uint32_t& cell, uint32_t value, bool (*onChange)() = nullptr) {
    return {key, SettingType::Int, &cell, value, nullptr, nullptr, onChange};
}

constexpr SettingDef Tint(const Char* key, Colour& cell, uint32_t written, const Colour* fallback = nullptr,
                          bool (*onChange)() = nullptr) {
    return {key, SettingType::Colour, &cell, Hex(written), nullptr, fallback, onChange};
}

constexpr SettingDef String(const Char* key, Char*& cell, const Char* value, bool (*onChange)() = nullptr) {
    return {key, SettingType::String, &cell, 0, value, nullptr, onChange};
}

constexpr Char DefaultFileTypes[] = u"C++ Files (*.cpp;*.c;*.cxx;*.h;*.hxx)|*.cpp;*.c;*.cxx;*.h;*.hxx|"
                                    u"Text Files (*.txt)|*.txt|HTML Files (*.htm;*.html)|*.htm;*.html|"
                                    u"XML Files (*.xml;*.xsl)|*.xml;*.xsl|All Files (*.*)|*.*";

constexpr SettingsRecord& live = settings;

// A row with a fallback never takes its own default when the file is loaded: an unset background
// follows the background of the text. See docs/oddities.md.
constinit const SettingDef Rows[] = {
    String(u"FontName", live.FontName, u"Courier New", Font),
    Number(u"FontSize", live.FontSize, 10, Font),
    Number(u"FontBold", live.FontBold, 0, Font),
    Number(u"CaretWidth", live.CaretWidth, 2),
    Number(u"ShowWhitespace", live.ShowWhitespace, 0),
    Number(u"ReplaceTabs", live.ReplaceTabs, 1),
    Number(u"SpacesPerTab", live.SpacesPerTab, 4),
    Number(u"PasteKeepSelection", live.PasteKeepSelection, 1),
    Tint(u"SpaceColor", live.SpaceColor, 0x008080),
    Number(u"MarginWidth", live.MarginWidth, 20),
    Tint(u"MarginColor", live.MarginColor, 0xdcdcdc, nullptr, MarginBrush),
    Tint(u"BookmarkColor", live.BookmarkColor, 0x00ffff, nullptr, BookmarkBrush),
    Tint(u"GuideColor", live.GuideColor, 0x000000, &live.MarginColor),
    Number(u"ColumnGuide", live.ColumnGuide, 80),
    Number(u"IndentGuide", live.IndentGuide, 1),
    String(u"QuickOpenPath", live.QuickOpenPath, u".;%INCLUDE%"),
    String(u"TextFileTypes", live.TextFileTypes, DefaultFileTypes),
    Number(u"ShowLineNumbers", live.ShowLineNumbers, 1),
    Number(u"VarWidthLineNumbers", live.VarWidthLineNumbers, 0),
    Number(u"RenderType", live.RenderType, 0),
    Tint(u"TextFg", live.TextFg, 0x000000),
    Tint(u"TextBg", live.TextBg, 0xffffff, nullptr, BackgroundBrush),
    Tint(u"SelFg", live.SelFg, 0xffffff),
    Tint(u"SelBg", live.SelBg, 0x000000, nullptr, SelectionBrush),
    Tint(u"LineNumFg", live.LineNumFg, 0x000000),
    Tint(u"LineNumBg", live.LineNumBg, 0xffffdc),
    Tint(u"CommentFg", live.CommentFg, 0x008000),
    Tint(u"CommentBg", live.CommentBg, 0xe6e6e6, &live.TextBg),
    Tint(u"LongCommentFg", live.LongCommentFg, 0x008000),
    Tint(u"LongCommentBg", live.LongCommentBg, 0xe6e6e6, &live.TextBg),
    Tint(u"StringFg", live.StringFg, 0xff0000),
    Tint(u"StringBg", live.StringBg, 0xffffff, &live.TextBg),
    Tint(u"KeywordFg", live.KeywordFg, 0x0000ff),
    Tint(u"KeywordBg", live.KeywordBg, 0xffffff, &live.TextBg),
    Tint(u"NumberFg", live.NumberFg, 0x800000),
    Tint(u"NumberBg", live.NumberBg, 0xffffff, &live.TextBg),
    Tint(u"BraceMatchFg", live.BraceMatchFg, 0x000000),
    Tint(u"BraceMatchBg", live.BraceMatchBg, 0xffff00),
    Tint(u"HtmlTagFg", live.HtmlTagFg, 0x0000ff),
    Tint(u"HtmlTagBg", live.HtmlTagBg, 0xffffff, &live.TextBg),
    Tint(u"HtmlAttrFg", live.HtmlAttrFg, 0x800080),
    Tint(u"HtmlAttrBg", live.HtmlAttrBg, 0xffffff, &live.TextBg),
    Tint(u"HtmlAttrValueFg", live.HtmlAttrValueFg, 0xff00ff),
    Tint(u"HtmlAttrValueBg", live.HtmlAttrValueBg, 0xffffff, &live.TextBg),
    Tint(u"HtmlAttrQuotedValueFg", live.HtmlAttrQuotedValueFg, 0xff0000),
    Tint(u"HtmlAttrQuotedValueBg", live.HtmlAttrQuotedValueBg, 0xffffff, &live.TextBg),
    Tint(u"HtmlCommentFg", live.HtmlCommentFg, 0x008000),
    Tint(u"HtmlCommentBg", live.HtmlCommentBg, 0xe6e6e6, &live.TextBg),
    Tint(u"HtmlPunctFg", live.HtmlPunctFg, 0x0000ff),
    Tint(u"HtmlPunctBg", live.HtmlPunctBg, 0xffffff, &live.TextBg),
    Tint(u"BinFg", live.BinFg, 0xff0000),
    Tint(u"BinBg", live.BinBg, 0xffffff, &live.TextBg),
};
static_assert(sizeof(Rows) / sizeof(Rows[0]) == SettingCount);

} // namespace

const SettingsSectionDef generalSettings = {u"General", Rows, SettingCount};

void SetDrawingRebuilder(DrawingRebuilder rebuild) { drawingRebuilder = rebuild; }
