#pragma once

#include "base/Types.h"
#include "base/WString.h"

class IniFile;

// The live preferences, in the order of the record. String cells are owned by the record's user (see
// SettingsRecord functions below); null when absent.
struct SettingsRecord {
    uint32_t ReplaceTabs, SpacesPerTab, ShowWhitespace, PasteKeepSelection, ColumnGuide, IndentGuide;
    Char* QuickOpenPath;
    Char* TextFileTypes;
    Char* FontName;
    uint32_t FontSize, FontBold, MarginWidth, CaretWidth, ShowLineNumbers, VarWidthLineNumbers, RenderType;
    Colour TextFg, TextBg, SelFg, SelBg, LineNumFg, LineNumBg, MarginColor, SpaceColor, BookmarkColor, GuideColor;
    Colour CommentFg, CommentBg, LongCommentFg, LongCommentBg, StringFg, StringBg, KeywordFg, KeywordBg;
    Colour NumberFg, NumberBg, BraceMatchFg, BraceMatchBg, HtmlTagFg, HtmlTagBg, HtmlAttrFg, HtmlAttrBg;
    Colour HtmlAttrValueFg, HtmlAttrValueBg, HtmlAttrQuotedValueFg, HtmlAttrQuotedValueBg;
    Colour HtmlCommentFg, HtmlCommentBg, HtmlPunctFg, HtmlPunctBg, BinFg, BinBg;
};

// The process-wide record that everything reads.
extern SettingsRecord settings;

enum class SettingType : uint32_t { Int = 0, Colour = 1, String = 2 };

// What a changed cell makes necessary beyond being read again; the drawing half carries it out.
enum class SettingChange : uint32_t { Nothing, Font, MarginBrush, BookmarkBrush, BackgroundBrush, SelectionBrush };

struct SettingDef {
    const Char* key;
    SettingType type;
    void* cell; // into `settings`: uint32_t for Int, Colour for Colour, Char* for String
    // The default, by type.
    uint32_t defaultNumber;
    const Char* defaultString;
    const uint32_t* fallback; // another cell of `settings`, or null; never set for String rows
    bool (*onChange)();       // or null
};

struct SettingsSectionDef {
    const Char* name;
    const SettingDef* rows;
    uint32_t count;
};

constexpr uint32_t SettingCount = 52;
extern const SettingsSectionDef generalSettings;

// The drawing objects derived from the settings belong to the windowed half, which installs this at
// start-up; without one the change handlers do nothing and report success.
using DrawingRebuilder = bool (*)(SettingChange change);
void SetDrawingRebuilder(DrawingRebuilder rebuild);

// Start-up and reload: the record from `file` (ApplySettingsFromFile), the tool list, then the font
// handler and the brush handlers margin, bookmark, background, selection, once each.
void LoadSettings(const IniFile& file);
void ApplySettingsFromFile(const IniFile& file);
// Writes all rows into the first General section, made when missing. False without memory.
bool StoreSettingsToFile(IniFile& file);

// Sets one cell by name and runs its handler. Section (null: General) and key are matched without
// regard to case; an unknown one does nothing.
void SetOption(const Char* section, const Char* key, const Char* value);
// The row of a key of General, matched without regard to case; null when unknown.
const SettingDef* FindSetting(const Char* key);

// Splits and carries out the argument of the setopt command: a key and a value, each a word up to the
// next space or a text in double quotes. A key that is not closed does nothing.
void ExecuteSetOption(const Char* argument);

// "#rrggbb" as written in the file; anything shorter than 7 characters or without "#" is black.
Colour ParseColour(const Char* text);
bool AppendColour(WString& out, Colour colour); // "#rrggbb", lower case

// The distinct values of all colour cells in table order, at most `capacity`; returns how many.
uint32_t ListDistinctColours(Colour* out, uint32_t capacity);

// Stores the size and rebuilds the font; the file is not written.
void SetFontSize(uint32_t size);

// Copies every cell; the strings of `to` are shared with `from` afterwards, not copied.
void CopySettings(SettingsRecord& to, const SettingsRecord& from);
// Makes `copy` live and runs every row's handler in table order. Strings of the live record that
// `copy` does not share are freed.
void AdoptSettings(const SettingsRecord& copy);
// Replaces one string cell of a record by a copy of `text`; false without memory (cell then absent).
// The old string is freed unless the live record or `keepOld` holds it.
bool ReplaceString(Char*& cell, const Char* text);

// Frees every string cell and the tool list. The drawing objects are the windowed half's to destroy.
void ReleaseSettings();
