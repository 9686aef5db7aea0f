#pragma once

#include "base/Text.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "syntax/EngineChoice.h"
#include "syntax/EngineDefinition.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

struct EngineReleaser {
    void operator()(SyntaxEngine* engine) const { engine->Release(); }
};
using EngineHandle = std::unique_ptr<SyntaxEngine, EngineReleaser>;

// Colours that distinguish the classes: the foreground of class i is 0x101010 + i, the background
// 0x202020 + i.
constexpr Colour FirstForeground = 0x101010;
constexpr Colour FirstBackground = 0x202020;

inline const char* const ClassNames[ColourClassCount] = {"text", "comment", "long",  "string",      "keyword", "number",
                                                         "tag",  "attr",    "value", "quotedvalue", "markup",  "punct"};

inline Colour SettingsRecord::*const ClassColours[ColourClassCount][2] = {
    {&SettingsRecord::TextFg, &SettingsRecord::TextBg},
    {&SettingsRecord::CommentFg, &SettingsRecord::CommentBg},
    {&SettingsRecord::LongCommentFg, &SettingsRecord::LongCommentBg},
    {&SettingsRecord::StringFg, &SettingsRecord::StringBg},
    {&SettingsRecord::KeywordFg, &SettingsRecord::KeywordBg},
    {&SettingsRecord::NumberFg, &SettingsRecord::NumberBg},
    {&SettingsRecord::HtmlTagFg, &SettingsRecord::HtmlTagBg},
    {&SettingsRecord::HtmlAttrFg, &SettingsRecord::HtmlAttrBg},
    {&SettingsRecord::HtmlAttrValueFg, &SettingsRecord::HtmlAttrValueBg},
    {&SettingsRecord::HtmlAttrQuotedValueFg, &SettingsRecord::HtmlAttrQuotedValueBg},
    {&SettingsRecord::HtmlCommentFg, &SettingsRecord::HtmlCommentBg},
    {&SettingsRecord::HtmlPunctFg, &SettingsRecord::HtmlPunctBg},
};

// What a highlight range of the tests is painted with.
constexpr Colour BraceForeground = 0x303030;
constexpr Colour BraceBackground = 0x303031;

inline HighlightRange Brace(uint32_t start, uint32_t end) {
    return {start, end, BraceForeground, BraceBackground, NoFill};
}

inline std::string Readable(const Char* text, size_t length) {
    std::string out;
    for (size_t i = 0; i < length; ++i) {
        char code[8] = {};
        if (text[i] >= 32 && text[i] < 127)
            code[0] = static_cast<char>(text[i]);
        else if (text[i] == u'\n')
            std::snprintf(code, sizeof code, "\\n");
        else
            std::snprintf(code, sizeof code, "\\x%04X", text[i]);
        out += code;
    }
    return out;
}

inline std::string NameOf(const ColourSpan& span) {
    if (span.foreground == BraceForeground && span.background == BraceBackground) return "brace";
    const uint32_t index = span.foreground - FirstForeground;
    if (index >= ColourClassCount || span.background != FirstBackground + index) return "?";
    return ClassNames[index];
}

// A coloured line for reading: "keyword(int) text( x)", and what came with it.
struct Painted {
    std::string runs;
    uint32_t state = 0;
    uint32_t coloured = 0;
    std::string fill = "none";
};

// The text is given in a block of exactly its size, so that a read beyond it is found out.
inline Painted Paint(SyntaxEngine& engine, std::u16string_view text, uint32_t state = 0, uint32_t offset = 0) {
    const std::vector<Char> exact(text.begin(), text.end());
    const auto length = static_cast<uint32_t>(exact.size());
    ColouredLine line;
    Painted painted;
    painted.coloured = engine.ColourLine(offset, exact.data(), length, state, line);
    painted.state = state;
    uint32_t at = 0;
    for (uint32_t i = 0; i < line.count; ++i) {
        const ColourSpan& span = line.spans[i];
        if (i != 0) painted.runs += ' ';
        if (span.length > length - at) {
            ADD_FAILURE() << "run " << i << " goes beyond the line";
            return painted;
        }
        painted.runs += NameOf(span) + '(' + Readable(exact.data() + at, span.length) + ')';
        at += span.length;
    }
    EXPECT_EQ(at, painted.coloured) << "the runs do not add up to what was coloured";
    if (line.fill != NoFill) {
        const uint32_t index = line.fill - FirstBackground;
        painted.fill = index < ColourClassCount ? ClassNames[index] : "?";
    }
    return painted;
}

inline std::string Runs(SyntaxEngine& engine, std::u16string_view text, uint32_t state = 0, uint32_t offset = 0) {
    return Paint(engine, text, state, offset).runs;
}

struct Scanned {
    uint32_t state = 0;
    uint32_t stopped = 0;
    bool operator==(const Scanned&) const = default;
};
inline void PrintTo(const Scanned& scanned, std::ostream* out) {
    *out << "state " << scanned.state << " at " << scanned.stopped;
}

inline Scanned ScanText(SyntaxEngine& engine, std::u16string_view text, uint32_t start = 0, uint32_t state = 0) {
    const std::vector<Char> exact(text.begin(), text.end());
    Scanned scanned;
    scanned.state = engine.ScanState(exact.data(), static_cast<uint32_t>(exact.size()), start, state, scanned.stopped);
    return scanned;
}

inline bool MayChange(SyntaxEngine& engine, std::u16string_view text) {
    const std::vector<Char> exact(text.begin(), text.end());
    return engine.MayChangeState(exact.data(), static_cast<uint32_t>(exact.size()));
}

// The state at the end of a text when every line is coloured with its line feed in turn.
inline uint32_t CarryState(SyntaxEngine& engine, std::u16string_view text, uint32_t state = 0) {
    for (size_t start = 0; start < text.size();) {
        const size_t feed = text.find(u'\n', start);
        const size_t end = feed == text.npos ? text.size() : feed + 1;
        state = Paint(engine, text.substr(start, end - start), state).state;
        start = end;
    }
    return state;
}

// Every test starts with the built-in definitions in colours that distinguish the classes.
class SyntaxTest : public ::testing::Test {
protected:
    SyntaxTest() {
        for (uint32_t i = 0; i < ColourClassCount; ++i) {
            settings.*ClassColours[i][0] = FirstForeground + i;
            settings.*ClassColours[i][1] = FirstBackground + i;
        }
        Load(u"");
    }
    ~SyntaxTest() override { ReleaseEngineDefinitions(); }

    // Loads the definitions again, with those of a settings file.
    static void Load(std::u16string text) {
        IniFile file;
        ASSERT_TRUE(file.Parse(text.data()));
        LoadEngineDefinitions(file);
    }
    static EngineHandle Choose(const Char* name, const Char* path = nullptr) {
        return EngineHandle(ChooseEngine(name, path));
    }
};
