#pragma once

#include "syntax/CharSearchSet.h"
#include "syntax/EngineBase.h"
#include "syntax/HtmlState.h"
#include "syntax/RunList.h"

// Makes the engine of a language for the code in a page; null when memory runs out. `htmlDepth` is how many HTML
// engines it is nested in.
using EngineMaker = SyntaxEngine* (*)(const Char* language, uint32_t htmlDepth);

// Colours markup, and hands the content of script elements and php blocks to engines of their own.
class HtmlEngine final : public EngineBase {
public:
    // HTML engines may be nested, when a definition says that scripts are HTML. A deeper
    // one is replaced by a plain engine.
    static constexpr uint32_t MaxDepth = 4;

    // `engineDefinition` must outlive the engine.
    HtmlEngine(const EngineDefinition& engineDefinition, uint32_t htmlDepth, EngineMaker innerEngines);

    uint32_t ColourLine(uint32_t offset, const Char* text, uint32_t length, uint32_t& state,
                        ColouredLine& line) override;
    uint32_t ScanState(const Char* text, uint32_t length, uint32_t start, uint32_t state, uint32_t& stopped) override;
    bool MayChangeState(const Char*, uint32_t) override { return true; }
    void SetHighlight(uint32_t index, const HighlightRange* range) override;
    HighlightRange Highlight(uint32_t index) const override;
    const Char* BraceCharacters() const override { return u"{}()[]<>"; }
    uint32_t ScanLinesToEnd(const Char* text, uint32_t length, uint32_t state, uint32_t& stopped) override;
    uint32_t CarriedState() const override { return returnState; }
    void SetCarriedState(uint32_t state) override { returnState = state; }

private:
    class Colouring;
    class Scanning;
    class LineScanning;

    ~HtmlEngine() override;
    // The engine of the embedded code that `state` is a state of, made on first need; null without memory.
    SyntaxEngine* InnerEngine(uint32_t state);

    RunList runs;
    const EngineDefinition& definition;
    // Where a tag goes on after an attribute's value. It is carried over from line to line without
    // being part of the state.
    uint32_t returnState = HtmlState::Between;
    SyntaxEngine* script = nullptr;
    SyntaxEngine* php = nullptr;
    uint32_t depth; // how many HTML engines it is nested in
    EngineMaker makeEngine;
    CharSearchSet tagStart;
};
