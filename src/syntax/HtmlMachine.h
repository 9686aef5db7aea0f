#pragma once

#include "base/Text.h"
#include "syntax/CharSearchSet.h"
#include "syntax/HtmlState.h"

// The states that a machine begins with, or goes on with.
struct HtmlStart {
    uint32_t state;
    uint32_t returnState;
};

// The state machine that reads markup, for colouring and for scanning. `Output` has
//   bool Start(uint32_t kind)    begins a run; false without memory
//   uint32_t Kind()              the kind of the current run
//   void Take(size_t count)      gives characters to the current run
//   bool Embedded(machine)       continues from a state of embedded code; false without memory
//   TagNameEndsAtLineFeed        whether the name of a tag does
template <class Output> class HtmlMachine {
public:
    // `tagStops` finds `<`.
    HtmlMachine(Output& output, const CharSearchSet& tagStops, const Char* text, const Char* textEnd, HtmlStart start)
        : at(text), end(textEnd), state(start.state), returnState(start.returnState), out(output), tagStart(tagStops) {}

    // Goes on to the end of the text; false without memory.
    bool Run() {
        while (at < end) {
            if (!Step()) return false;
        }
        return true;
    }

    // Whether `text`, in lower case when letter case is folded, comes next.
    template <size_t Size> bool IsNext(const Char (&text)[Size], bool foldCase = false) const {
        constexpr size_t length = Size - 1;
        if (static_cast<size_t>(end - at) < length) return false;
        for (size_t i = 0; i < length; ++i) {
            if ((foldCase ? Text::FoldCase(at[i]) : at[i]) != text[i]) return false;
        }
        return true;
    }
    void TakeTo(const Char* to) {
        out.Take(static_cast<size_t>(to - at));
        at = to;
    }

    const Char* at;
    const Char* const end;
    uint32_t state;
    // The state after an attribute's value.
    uint32_t returnState;

private:
    bool Step() {
        using namespace HtmlState;
        if (state >= ScriptContent) return out.Embedded(*this);
        if (out.Kind() != state && !out.Start(state)) return false;
        switch (state) {
        case Tag:
        case ScriptTag:
            return InTag();
        case Attribute:
            return InAttribute();
        case Value:
            return InValue();
        case SingleQuoted:
            return InQuotedValue(u'\'');
        case DoubleQuoted:
            return InQuotedValue(u'"');
        case Comment:
            return InComment();
        default:
            return InText();
        }
    }

    // Text takes everything up to the next `<` at once: pages are mostly text, and the search is vectorised.
    bool InText() {
        TakeTo(tagStart.Find(at, end));
        return at == end || OpenTag();
    }

    bool OpenTag() {
        using namespace HtmlState;
        if (IsNext(u"<!--")) {
            state = Comment;
            if (!out.Start(Comment)) return false;
            TakeTo(at + 4);
            return true;
        }
        if (IsNext(u"<script", true)) return StartTag(ScriptTag, ScriptTag, ScriptTag);
        if (IsNext(u"<?php", true)) return StartTag(Tag, PhpContent, Tag);
        return StartTag(Tag, Tag, Tag);
    }

    // Takes the name of a tag, its `<` included. `kind` differs from the new state where the content of a php
    // block follows its name directly.
    bool StartTag(uint32_t kind, uint32_t newState, uint32_t newReturnState) {
        if (!out.Start(kind)) return false;
        state = newState;
        returnState = newReturnState;
        TakeTo(FindIf([](Char c) { return EndsWord(c) || (Output::TagNameEndsAtLineFeed && c == u'\n'); }));
        return true;
    }

    bool InTag() {
        using namespace HtmlState;
        TakeTo(FindIf([](Char c) { return !Text::IsBlank(c); }));
        if (at == end) return true;
        if (*at == u'>') {
            state = state == ScriptTag ? ScriptContent : Between;
        } else {
            state = Attribute;
            if (!out.Start(Attribute)) return false;
        }
        TakeTo(at + 1);
        return true;
    }

    bool InAttribute() {
        using namespace HtmlState;
        TakeTo(FindIf([](Char c) { return c == u'=' || c == u'>'; }));
        if (at == end) return true;
        if (*at == u'=') return TakeEquals();
        // A script tag whose last attribute has no value ends like any other tag.
        if (!out.Start(returnState)) return false;
        TakeTo(at + 1);
        state = Between;
        return true;
    }

    bool TakeEquals() {
        using namespace HtmlState;
        if (!out.Start(Punctuation)) return false;
        TakeTo(at + 1);
        TakeTo(FindIf([](Char c) { return !Text::IsBlank(c); }));
        state = Value;
        if (at < end && *at == u'\'') state = SingleQuoted;
        if (at < end && *at == u'"') state = DoubleQuoted;
        return true;
    }

    // May take nothing, when a `>` follows the equals sign: the tag then ends as usual.
    bool InValue() {
        TakeTo(FindIf(EndsWord));
        state = returnState;
        return true;
    }

    // A `>` ends the value early.
    bool InQuotedValue(Char quote) {
        TakeTo(at + 1);
        TakeTo(FindIf([quote](Char c) { return c == quote || c == u'>'; }));
        if (at < end && *at == quote) TakeTo(at + 1);
        state = returnState;
        return true;
    }

    // Looks at dashes only; comments are long and hold few of them.
    bool InComment() {
        for (;;) {
            TakeTo(FindIf([](Char c) { return c == u'-'; }));
            if (at == end) return true;
            if (IsNext(u"-->")) break;
            TakeTo(at + 1);
        }
        TakeTo(at + 3);
        state = HtmlState::Between;
        return true;
    }

    static bool EndsWord(Char c) { return Text::IsBlank(c) || c == u'>'; }
    template <class Stops> const Char* FindIf(Stops stops) const {
        const Char* found = at;
        while (found < end && !stops(*found)) ++found;
        return found;
    }

    Output& out;
    const CharSearchSet& tagStart;
};
