#pragma once

#include "view/AccessibleRange.h"

#include <algorithm>
#include <string>
#include <vector>

// What screen readers are told of a text, over one plain string: every unit is cut out by walking from the start.
struct AccessibleModel {
    std::u16string text;

    static bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }
    // As far as the tests' texts go.
    static bool IsLetter(char16_t c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' ||
               c == u'#' || (c >= 0xC0 && c < 0x2000) || (c >= 0xD800 && c <= 0xDFFF);
    }

    // As far as the tests' texts go.
    static bool IsMark(char16_t c) { return c >= 0x300 && c < 0x370; }

    size_t CharacterEnd(size_t at) const {
        const bool pair = text[at] >= 0xD800 && text[at] <= 0xDBFF && at + 1 < text.size() && text[at + 1] >= 0xDC00 &&
                          text[at + 1] <= 0xDFFF;
        const bool isLineFeed = text[at] == u'\n';
        at += pair ? 2 : 1;
        while (!isLineFeed && at < text.size() && IsMark(text[at])) ++at;
        return at;
    }
    // Goes on while the next character belongs to the last one's kind, or that was a blank.
    size_t WordEnd(size_t at) const {
        for (;;) {
            at = CharacterEnd(at);
            if (at == text.size() || text[at] == u'\n' || text[at - 1] == u'\n') return at;
            if (IsBlank(text[at - 1])) continue;
            if (IsBlank(text[at]) || IsLetter(text[at]) != IsLetter(text[at - 1])) return at;
        }
    }
    size_t UnitEnd(AccessibleUnit unit, size_t at) const {
        switch (unit) {
        case AccessibleUnit::Character:
            return CharacterEnd(at);
        case AccessibleUnit::Format:
        case AccessibleUnit::Word:
            return WordEnd(at);
        case AccessibleUnit::Line:
        case AccessibleUnit::Paragraph: {
            const size_t feed = text.find(u'\n', at);
            return feed == text.npos ? text.size() : feed + 1;
        }
        default:
            return text.size();
        }
    }
    // Where units begin, and the text's end.
    std::vector<size_t> Borders(AccessibleUnit unit) const {
        std::vector<size_t> borders = {0};
        while (borders.back() < text.size()) borders.push_back(UnitEnd(unit, borders.back()));
        return borders;
    }
    bool HasLastEmptyLine(AccessibleUnit unit) const {
        const bool isLine = unit == AccessibleUnit::Line || unit == AccessibleUnit::Paragraph;
        return isLine && !text.empty() && text.back() == u'\n';
    }

    TextRange Expand(AccessibleUnit unit, size_t at) const {
        const std::vector<size_t> borders = Borders(unit);
        auto next = std::upper_bound(borders.begin(), borders.end(), at);
        // The caret after the last character is in the last line still, and in the document.
        const bool larger = unit >= AccessibleUnit::Line && !HasLastEmptyLine(unit) && borders.size() > 1;
        if (next == borders.end() && larger) --next;
        if (next == borders.end()) return Range(text.size(), text.size());
        return Range(*(next - 1), *next);
    }
    // To the next border, `count` times.
    size_t Walk(AccessibleUnit unit, size_t at, int count, int& moved) const {
        const std::vector<size_t> borders = Borders(unit);
        for (moved = 0; moved < count && at < text.size(); ++moved)
            at = *std::upper_bound(borders.begin(), borders.end(), at);
        for (; moved > count && at > 0; --moved) at = *(std::lower_bound(borders.begin(), borders.end(), at) - 1);
        return at;
    }
    TextRange Move(TextRange range, AccessibleUnit unit, int count, int& moved) const {
        if (range.IsEmpty()) {
            const size_t at = Walk(unit, range.start, count, moved);
            return Range(at, at);
        }
        size_t at = Expand(unit, range.start).start;
        moved = 0;
        for (; moved < count; ++moved) {
            int step = 0;
            const size_t next = Walk(unit, at, 1, step);
            if (step == 0 || (next == text.size() && !HasLastEmptyLine(unit))) break;
            at = next;
        }
        if (count < 0) at = Walk(unit, at, count, moved);
        return Expand(unit, at);
    }
    TextRange Place(TextRange range, RangeEnd end, size_t at) const {
        if (end == RangeEnd::Start) return Range(at, std::max<size_t>(at, range.end));
        return Range(std::min<size_t>(at, range.start), at);
    }
    static TextRange Range(size_t start, size_t end) {
        return {static_cast<uint32_t>(start), static_cast<uint32_t>(end)};
    }
};
