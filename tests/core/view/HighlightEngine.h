#pragma once

#include "syntax/SyntaxEngine.h"

// Records the highlights that a view sets, and colours nothing.
class HighlightEngine final : public SyntaxEngine {
public:
    uint32_t AddRef() override { return ++references; }
    uint32_t Release() override {
        if (--references) return references;
        delete this;
        return 0;
    }
    uint32_t ColourLine(uint32_t, const Char*, uint32_t length, uint32_t&, ColouredLine& line) override {
        span = {1, 2, length};
        line = {&span, 1, NoFill};
        return length;
    }
    uint32_t ScanState(const Char*, uint32_t length, uint32_t, uint32_t, uint32_t& stopped) override {
        stopped = length;
        return 0;
    }
    bool MayChangeState(const Char*, uint32_t) override { return false; }
    void SetHighlight(uint32_t index, const HighlightRange* range) override {
        ranges[index] = range ? *range : HighlightRange();
    }
    HighlightRange Highlight(uint32_t index) const override { return ranges[index]; }
    bool SetEndMarker(const Char*) override { return true; }
    const Char* BraceCharacters() const override { return u"{}()[]"; }

    HighlightRange ranges[2];

private:
    ~HighlightEngine() = default;
    ColourSpan span = {};
    uint32_t references = 1;
};
