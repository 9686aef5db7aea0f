#include "settings/Settings.h"

// Process-wide: everything that draws, edits or runs something reads it.
LiveSettings settings;

namespace {

template <DrawingResource Changed> bool Rebuild() { return RebuildDrawing(Changed); }

constexpr auto Font = Rebuild<DrawingResource::Font>;
constexpr auto MarginBrush = Rebuild<DrawingResource::MarginBrush>;
constexpr auto BookmarkBrush = Rebuild<DrawingResource::BookmarkBrush>;
constexpr auto BackgroundBrush = Rebuild<DrawingResource::BackgroundBrush>;
constexpr auto SelectionBrush = Rebuild<DrawingResource::SelectionBrush>;

// Red, green and blue as they are written in the file.
constexpr Colour Hex(uint32_t written) { return Rgb(written >> 16, written >> 8 & 0xFF, written & 0xFF); }

using NumberCell = uint32_t SettingsRecord::*;
using StringCell = SettingText SettingsRecord::*;

constexpr SettingDef Number(const Char* key, NumberCell cell, uint32_t value, bool (*onChange)() = nullptr) {
    return {key, SettingType::Int, {cell, nullptr}, {value, nullptr}, nullptr, onChange};
}

constexpr SettingDef Tint(const Char* key, NumberCell cell, uint32_t written, NumberCell fallback = nullptr,
                          bool (*onChange)() = nullptr) {
    return {key, SettingType::Colour, {cell, nullptr}, {Hex(written), nullptr}, fallback, onChange};
}

constexpr SettingDef String(const Char* key, StringCell cell, const Char* value, bool (*onChange)() = nullptr) {
    return {key, SettingType::String, {nullptr, cell}, {0, value}, nullptr, onChange};
}

constexpr Char DefaultFileTypes[] = u"C++ Files (*.cpp;*.c;*.cxx;*.h;*.hxx)|*.cpp;*.c;*.cxx;*.h;*.hxx|"
                                    u"Text Files (*.txt)|*.txt|HTML Files (*.htm;*.html)|*.htm;*.html|"
                                    u"XML Files (*.xml;*.xsl)|*.xml;*.xsl|All Files (*.*)|*.*";

using Cells = SettingsRecord;

// A row with a fallback never takes its own default when the file is loaded: an unset background
// follows the background of the text. See docs/oddities.md.
constexpr SettingDef Rows[] = {
    String(u"FontName", &Cells::FontName, u"Courier New", Font),
    Number(u"FontSize", &Cells::FontSize, 10, Font),
    Number(u"FontBold", &Cells::FontBold, 0, Font),
    Number(u"CaretWidth", &Cells::CaretWidth, 2),
    Number(u"ShowWhitespace", &Cells::ShowWhitespace, 0),
    Number(u"ReplaceTabs", &Cells::ReplaceTabs, 1),
    Number(u"SpacesPerTab", &Cells::SpacesPerTab, 4),
    Number(u"PasteKeepSelection", &Cells::PasteKeepSelection, 1),
    Tint(u"SpaceColor", &Cells::SpaceColor, 0x008080),
    Number(u"MarginWidth", &Cells::MarginWidth, 20),
    Tint(u"MarginColor", &Cells::MarginColor, 0xdcdcdc, nullptr, MarginBrush),
    Tint(u"BookmarkColor", &Cells::BookmarkColor, 0x00ffff, nullptr, BookmarkBrush),
    Tint(u"GuideColor", &Cells::GuideColor, 0x000000, &Cells::MarginColor),
    Number(u"ColumnGuide", &Cells::ColumnGuide, 80),
    Number(u"IndentGuide", &Cells::IndentGuide, 1),
    String(u"QuickOpenPath", &Cells::QuickOpenPath, u".;%INCLUDE%"),
    String(u"TextFileTypes", &Cells::TextFileTypes, DefaultFileTypes),
    Number(u"ShowLineNumbers", &Cells::ShowLineNumbers, 1),
    Number(u"VarWidthLineNumbers", &Cells::VarWidthLineNumbers, 0),
    Number(u"RenderType", &Cells::RenderType, 0),
    Tint(u"TextFg", &Cells::TextFg, 0x000000),
    Tint(u"TextBg", &Cells::TextBg, 0xffffff, nullptr, BackgroundBrush),
    Tint(u"SelFg", &Cells::SelFg, 0xffffff),
    Tint(u"SelBg", &Cells::SelBg, 0x000000, nullptr, SelectionBrush),
    Tint(u"LineNumFg", &Cells::LineNumFg, 0x000000),
    Tint(u"LineNumBg", &Cells::LineNumBg, 0xffffdc),
    Tint(u"CommentFg", &Cells::CommentFg, 0x008000),
    Tint(u"CommentBg", &Cells::CommentBg, 0xe6e6e6, &Cells::TextBg),
    Tint(u"LongCommentFg", &Cells::LongCommentFg, 0x008000),
    Tint(u"LongCommentBg", &Cells::LongCommentBg, 0xe6e6e6, &Cells::TextBg),
    Tint(u"StringFg", &Cells::StringFg, 0xff0000),
    Tint(u"StringBg", &Cells::StringBg, 0xffffff, &Cells::TextBg),
    Tint(u"KeywordFg", &Cells::KeywordFg, 0x0000ff),
    Tint(u"KeywordBg", &Cells::KeywordBg, 0xffffff, &Cells::TextBg),
    Tint(u"NumberFg", &Cells::NumberFg, 0x800000),
    Tint(u"NumberBg", &Cells::NumberBg, 0xffffff, &Cells::TextBg),
    Tint(u"BraceMatchFg", &Cells::BraceMatchFg, 0x000000),
    Tint(u"BraceMatchBg", &Cells::BraceMatchBg, 0xffff00),
    Tint(u"HtmlTagFg", &Cells::HtmlTagFg, 0x0000ff),
    Tint(u"HtmlTagBg", &Cells::HtmlTagBg, 0xffffff, &Cells::TextBg),
    Tint(u"HtmlAttrFg", &Cells::HtmlAttrFg, 0x800080),
    Tint(u"HtmlAttrBg", &Cells::HtmlAttrBg, 0xffffff, &Cells::TextBg),
    Tint(u"HtmlAttrValueFg", &Cells::HtmlAttrValueFg, 0xff00ff),
    Tint(u"HtmlAttrValueBg", &Cells::HtmlAttrValueBg, 0xffffff, &Cells::TextBg),
    Tint(u"HtmlAttrQuotedValueFg", &Cells::HtmlAttrQuotedValueFg, 0xff0000),
    Tint(u"HtmlAttrQuotedValueBg", &Cells::HtmlAttrQuotedValueBg, 0xffffff, &Cells::TextBg),
    Tint(u"HtmlCommentFg", &Cells::HtmlCommentFg, 0x008000),
    Tint(u"HtmlCommentBg", &Cells::HtmlCommentBg, 0xe6e6e6, &Cells::TextBg),
    Tint(u"HtmlPunctFg", &Cells::HtmlPunctFg, 0x0000ff),
    Tint(u"HtmlPunctBg", &Cells::HtmlPunctBg, 0xffffff, &Cells::TextBg),
    Tint(u"BinFg", &Cells::BinFg, 0xff0000),
    Tint(u"BinBg", &Cells::BinBg, 0xffffff, &Cells::TextBg),
};
static_assert(sizeof(Rows) / sizeof(Rows[0]) == SettingCount);

} // namespace

const SettingsSectionDef generalSettings = {u"General", Rows, SettingCount};
