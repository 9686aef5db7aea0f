#pragma once

#include "syntax/SyntaxEngine.h"

#include <string>
#include <vector>

// A syntax engine that colours nothing. A line that holds an asterisk may change the lines after it. The
// texts it was asked about are kept.
class FakeEngine final : public SyntaxEngine {
public:
    static inline int alive = 0;

    FakeEngine() { ++alive; }
    uint32_t AddRef() override { return ++references; }
    uint32_t Release() override {
        if (--references) return references;
        delete this;
        return 0;
    }
    uint32_t ColourLine(uint32_t, const Char*, uint32_t length, uint32_t&, ColouredLine&) override { return length; }
    uint32_t ScanState(const Char*, uint32_t length, uint32_t, uint32_t, uint32_t& stopped) override {
        stopped = length;
        return 0;
    }
    bool MayChangeState(const Char* text, uint32_t length) override {
        asked.emplace_back(text, length);
        return asked.back().find(u'*') != std::u16string::npos;
    }
    void SetHighlight(uint32_t, const HighlightRange*) override {}
    bool SetEndMarker(const Char*) override { return true; }
    const Char* BraceCharacters() const override { return u"{}()[]"; }

    std::vector<std::u16string> asked;

private:
    ~FakeEngine() { --alive; }
    uint32_t references = 1;
};
