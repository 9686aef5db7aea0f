#pragma once

#include "syntax/CharacterClass.h"
#include "syntax/EngineBase.h"
#include "syntax/Marker.h"
#include "syntax/RunList.h"
#include "syntax/TokenStartScanner.h"

// Colours a language made of keywords, numbers, strings and comments. The state is 1 inside a long
// comment, else 0.
class CLikeEngine final : public EngineBase {
public:
    // The definition must have keywords and outlive the engine.
    explicit CLikeEngine(const EngineDefinition& engineDefinition);

    uint32_t ColourLine(uint32_t offset, const Char* text, uint32_t length, uint32_t& state,
                        ColouredLine& line) override;
    uint32_t ScanState(const Char* text, uint32_t length, uint32_t start, uint32_t state, uint32_t& stopped) override;
    bool MayChangeState(const Char* text, uint32_t length) override;
    void SetHighlight(uint32_t index, const HighlightRange* range) override;
    HighlightRange Highlight(uint32_t index) const override;
    uint32_t ScanLinesToEnd(const Char* text, uint32_t length, uint32_t state, uint32_t& stopped) override;

private:
    // The line that is being coloured.
    struct Line {
        const Char* text;
        const Char* end;
        uint32_t offset;
        bool highlighted; // some highlight range touches the line
        bool inComment;
        Colour fill;
        TokenMap map; // of the characters that come next
    };
    // A run that is not text, by where it ends; null for the end marker, which ends the colouring.
    struct Token {
        const Char* end = nullptr;
        ColourClass colours = {};
    };

    void EndMarkerChanged() override { BuildTables(); }
    void BuildTables();
    void SetStops();
    bool EveryMarkerIsMet() const;
    void AddMarker(const WString& marker, bool bothCases);
    // Whether a line comment starts at `at`, and the characters of its start.
    bool LineCommentStartsAt(const Char* at, const Char* end, uint32_t& markerLength) const;
    const Char* AfterLongComment(const Char* at, const Char* end, bool& inComment) const;

    bool ColourTokens(Line& line, const Char*& at, RunList* out) const;
    const Char* TakeText(Line& line, const Char* at, Token& next) const;
    const Char* SkipWhile(const Char* at, const Char* end, uint32_t flag) const;
    bool TokenAt(Line& line, const Char* at, const Char* wordEnd, uint32_t flags, Token& token) const;
    bool CommentAt(Line& line, const Char* at, Token& token) const;
    bool HighlightAt(const Line& line, const Char* at, Token& token) const;
    // Carries the state on to the end or the end marker; strings end with the text or with their line.
    template <bool LineByLine> void Scan(const Char*& at, const Char* end, bool& inComment) const;
    template <bool LineByLine> bool ScanTokenAt(const Char*& at, const Char* end, bool& inComment) const;
    void WalkLines(const Char*& at, const Char* end, bool& inComment) const;
    bool TouchesHighlight(uint32_t offset, uint32_t length) const;

    bool foldCase;
    RunList runs;
    const EngineDefinition& definition;
    const KeywordSet& keywords;
    HighlightRange highlights[HighlightCount];
    CharacterTable table;
    TokenStartScanner scanner;
    CharSearchSet scanStops;     // what the state scan has to look at
    bool everyMarkerMet = false; // colouring meets every marker and quote that it does not pass over in a token
    MarkerSearch longCommentStart;
    MarkerSearch longCommentEnd;
};
