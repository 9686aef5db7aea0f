#pragma once

#include "base/Array.h"
#include "syntax/EngineDefinition.h"
#include "syntax/SyntaxEngine.h"

// The runs of one line, made from left to right. The storage is kept from line to line.
class RunList {
public:
    static constexpr uint32_t NoKind = UINT32_MAX;

    void Clear() {
        spans.Clear();
        kind = NoKind;
    }
    // The kind of the current run; NoKind without one.
    uint32_t Kind() const { return kind; }
    // Appends a run from `from` to `to` (not empty). False without memory, as all below.
    bool Append(const ColourClass& colours, const Char* from, const Char* to) {
        ORVANE_ASSERT(from < to);
        return spans.Append({colours.foreground, colours.background, static_cast<uint32_t>(to - from)});
    }
    // Begins a run of a kind, for Extend. A run that got no characters gives way to it.
    bool Start(uint32_t newKind, const ColourClass& colours) {
        kind = newKind;
        if (!spans.IsEmpty() && spans.Last().length == 0) spans.RemoveLast();
        return spans.Append({colours.foreground, colours.background, 0});
    }
    void Extend(size_t characters) { spans.Last().length += static_cast<uint32_t>(characters); }
    // Appends the runs of another engine; the next run is a new one.
    bool AppendAll(const ColouredLine& line);

    const ColourSpan* Spans() const { return spans.Items(); }
    // A last run without characters does not count.
    uint32_t Count() const {
        const size_t count = spans.Count();
        return static_cast<uint32_t>(count != 0 && spans[count - 1].length == 0 ? count - 1 : count);
    }

private:
    Array<ColourSpan> spans;
    uint32_t kind = NoKind;
};

inline bool RunList::AppendAll(const ColouredLine& line) {
    if (!spans.IsEmpty() && spans.Last().length == 0) spans.RemoveLast();
    if (!spans.Reserve(spans.Count() + line.count)) return false;
    for (uint32_t i = 0; i < line.count; ++i) {
        if (line.spans[i].length != 0) spans.AppendReserved(line.spans[i]);
    }
    kind = NoKind;
    return true;
}
