#pragma once

#include "base/WString.h"
#include "settings/SettingText.h"

class IniFile;

// The live preferences, in the order of the record. A record is a value: it is copied and assigned as any other.
//
// Nothing validates a cell: it holds what was written, so 0 and 4294967295 are ordinary values of
// every number. Readers guard themselves: the views with viewbase/ViewMetrics.h, FontHeight for the font.
//
// A cell has the name of its key in the file, odd spellings included: docs/oddities.md.
struct SettingsRecord {
    uint32_t ReplaceTabs = 0, SpacesPerTab = 0, ShowWhitespace = 0, PasteKeepSelection = 0, ColumnGuide = 0;
    uint32_t IndentGuide = 0;
    SettingText QuickOpenPath, TextFileTypes, FontName;
    uint32_t FontSize = 0, FontBold = 0, MarginWidth = 0, CaretWidth = 0, ShowLineNumbers = 0;
    uint32_t VarWidthLineNumbers = 0, RenderType = 0;
    Colour TextFg = 0, TextBg = 0, SelFg = 0, SelBg = 0, LineNumFg = 0, LineNumBg = 0;
    Colour MarginColor = 0, SpaceColor = 0, BookmarkColor = 0, GuideColor = 0;
    Colour CommentFg = 0, CommentBg = 0, LongCommentFg = 0, LongCommentBg = 0, StringFg = 0, StringBg = 0;
    Colour KeywordFg = 0, KeywordBg = 0, NumberFg = 0, NumberBg = 0, BraceMatchFg = 0, BraceMatchBg = 0;
    Colour HtmlTagFg = 0, HtmlTagBg = 0, HtmlAttrFg = 0, HtmlAttrBg = 0;
    Colour HtmlAttrValueFg = 0, HtmlAttrValueBg = 0, HtmlAttrQuotedValueFg = 0, HtmlAttrQuotedValueBg = 0;
    Colour HtmlCommentFg = 0, HtmlCommentBg = 0, HtmlPunctFg = 0, HtmlPunctBg = 0, BinFg = 0, BinBg = 0;
};

constexpr uint32_t SettingCount = 52;

// Colours for some of the table's rows, by their index.
struct RowColours {
    bool has[SettingCount] = {};
    Colour colours[SettingCount] = {};
};

// The live record, and what goes with that alone: copies do not have it.
struct LiveSettings : SettingsRecord {
    using SettingsRecord::operator=;

    RowColours defaults; // of the section DefaultColours of the file
    RowColours system;   // that took the place of the user's (SystemColours.h)
};

// The process-wide record that everything reads.
extern LiveSettings settings;

// A scoped enumerator hides nothing; g++ 12 warns all the same.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
enum class SettingType : uint32_t { Int = 0, Colour = 1, String = 2 };
#pragma GCC diagnostic pop

// What of the drawing has to be rebuilt when a cell has changed; the windowed half does it.
enum class DrawingResource : uint32_t { Font, MarginBrush, BookmarkBrush, BackgroundBrush, SelectionBrush };

// One cell of any record: the member of the row's type, the other is null.
struct SettingCell {
    uint32_t SettingsRecord::*number;    // of Int and Colour rows
    SettingText SettingsRecord::*string; // of String rows
};

// A default, by type.
struct SettingDefault {
    uint32_t number;
    const Char* string;
};

// One row of the table that drives loading, storing and setting by name.
struct SettingDef {
    const Char* key;
    SettingType type;
    SettingCell cell;
    SettingDefault initial;             // unless the file or the fallback says otherwise
    uint32_t SettingsRecord::*fallback; // another cell, or null; of Colour rows only
    bool (*onChange)();                 // or null
};

struct SettingsSectionDef {
    const Char* name;
    const SettingDef* rows;
    uint32_t count;
};

// The only section of the table, in table order (the order of loading and storing).
extern const SettingsSectionDef generalSettings;

// A set of rows of the table, by their index: the settings that differ between two records.
class SettingsChanges {
public:
    void Add(uint32_t row);
    bool Holds(uint32_t row) const;
    // Whether a colour is among them, so that whatever keeps colours of its own has to be rebuilt.
    bool HoldsColour() const;

private:
    static_assert(SettingCount <= 64);
    uint64_t rows = 0; // bit i for row i
};

// Strings are compared by what they say; an absent one and an empty one differ.
SettingsChanges CompareSettings(const SettingsRecord& before, const SettingsRecord& after);

// Rebuilds a drawing object from the current settings; called by the change handlers. False when it could not be
// made. Implemented by settings/win32 (DrawingObjects) and, where nothing is drawn, by settings/posix.
bool RebuildDrawing(DrawingResource changed);

// Start-up and reload: the record from `file` (ApplySettingsFromFile), the tool list, then the font
// handler and the brush handlers margin, bookmark, background, selection, once each.
void LoadSettings(const IniFile& file);
// Each row in table order takes its key's value, else, with a colour, the one in the section DefaultColours of the
// file, else its fallback cell's current value, else its default. No handler runs. The colours of that section are not
// the user's colours: High Contrast replaces them (SystemColours.h). The additional settings are taken as well
// (AdditionalSettings.h).
void ApplySettingsFromFile(const IniFile& file);
// Writes all rows into the first General section, made at the end when missing, and after them those of the additional
// settings that are to be written; keys of neither stay.
// False without memory, with the file as it was.
[[nodiscard]] bool StoreSettingsToFile(IniFile& file);

// Of a colour row, by its index: what it takes while `record` has the other colours and the file no key for it.
Colour DefaultColour(uint32_t row, const SettingsRecord& record);

// Sets one cell by name and runs its handler, even for the value that it has already. Section (null:
// General) and key are matched without regard to case; an unknown one does nothing. A null value makes
// a string cell absent. An additional setting is set as well, and what reads it reads it when it needs it.
// Returns which rows have changed.
SettingsChanges SetOption(const Char* section, const Char* key, const Char* value);
// The row of a key of General, matched without regard to case; null when unknown.
const SettingDef* FindSetting(const Char* key);

// "#rrggbb" as written in the file; anything shorter than 7 characters or without "#" is black, and a
// character that is no hexadecimal digit counts as 0.
Colour ParseColour(const Char* text);
bool AppendColour(WString& out, Colour colour); // "#rrggbb", lower case

// The distinct values of all colour cells in table order, at most `capacity`; returns how many.
uint32_t ListDistinctColours(Colour* out, uint32_t capacity);

// Stores the size and rebuilds the font; the file is not written.
void SetFontSize(uint32_t size);

// Makes the values of `edited`, a copy that a dialog has changed, live and runs every row's handler in table order.
// Returns what has changed.
SettingsChanges AdoptSettings(const SettingsRecord& edited);

// Makes every string cell absent and empties the tool list. The drawing objects are the windowed half's to destroy.
void ReleaseSettings();

// The height that asks the system for a font of `size` points on a screen of `dpi` pixels an inch:
// minus the pixels, rounded to nearest with halves up, at least -MaxFontPixels.
constexpr int32_t MaxFontPixels = 4096;
int32_t FontHeight(uint32_t size, uint32_t dpi);
