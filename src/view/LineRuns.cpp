#include "view/LineRuns.h"

#include "base/Surrogates.h"
#include "viewbase/TextDirection.h"

#include <utility>

namespace {

// A font may give some characters no width at all. A row holds no more characters than this, so that a
// long line of such characters still costs no more than any other.
constexpr size_t MaxCharacters = 1u << 16;

} // namespace

void LineRuns::Begin(const RowStyle& rowStyle, CharWidths& charWidths) {
    style = rowStyle;
    widths = &charWidths;
    clipLeft = style.scroll;
    clipRight = int64_t(style.scroll) + style.textRight - style.textLeft;
    spaceWidth = style.metrics.spaceWidth > 0 ? style.metrics.spaceWidth : 1;
}

bool LineRuns::Build(const Char* text, uint32_t offset, const ColourSpan* spans, uint32_t spanCount, LinePlace from) {
    characters.Clear();
    advances.Clear();
    runs.Clear();
    position = from.position;
    mayMerge = inLetter = hasSecond = false;
    bool done = true;
    for (uint32_t i = 0; i < spanCount && position < clipRight && done; ++i) {
        ColourSpan span = spans[i];
        const uint32_t passed = from.column < span.length ? from.column : span.length;
        from.column -= passed;
        span.length -= passed;
        done = AddSpan(text + passed, offset + passed, span);
        text += spans[i].length;
        offset += spans[i].length;
    }
    const int64_t seen = position < clipLeft ? clipLeft : position;
    end = ToClient(seen < clipRight ? seen : clipRight);
    return done;
}

// Cuts the span where the selection starts and ends.
bool LineRuns::AddSpan(const Char* text, uint32_t offset, const ColourSpan& span) {
    const Piece plain = {span.foreground, span.background};
    const Piece selected = {style.selectionForeground, style.selectionBackground};
    const auto within = [&](uint32_t bound) {
        return bound <= offset ? 0 : bound - offset < span.length ? bound - offset : span.length;
    };
    const uint32_t from = within(style.selection.start);
    const uint32_t to = within(style.selection.end);
    return AddPiece(text, from, plain) && AddPiece(text + from, to - from, selected) &&
           AddPiece(text + to, span.length - to, plain);
}

// A pair of surrogates has the colours of its first half, as neither of them is drawn without the other. Reading on
// after the piece is safe: a line feed or NUL ends the line.
bool LineRuns::AddPiece(const Char* text, uint32_t count, const Piece& piece) {
    for (uint32_t i = 0; i < count && position < clipRight && text[i] != 0;) {
        if (std::exchange(hasSecond, false)) {
            ++i;
            continue;
        }
        i += SkipHidden(text + i, count - i);
        if (i == count || text[i] == 0) break;
        if (const uint32_t added = AddPlain(text + i, count - i, piece)) {
            i += added;
            continue;
        }
        Char shown = text[i++];
        RunKind kind = RunKind::Text;
        if (shown == u'\t') {
            if (!AddTab(piece)) return false;
            continue;
        }
        if (shown == u'\n') {
            shown = u' '; // a selected line end shows as one selected cell
        } else if (shown == u' ' && style.showWhitespace) {
            kind = RunKind::VisibleSpace;
        }
        hasSecond = Surrogates::IsPair(shown, text[i]);
        if (!AddCharacter(shown, hasSecond ? text[i] : Char{0}, piece, kind)) return false;
    }
    return true;
}

// Most of what is drawn is letters and signs about which nothing has to be asked one by one: they are no controls,
// pairs or marks and run to the right.
uint32_t LineRuns::AddPlain(const Char* text, uint32_t count, const Piece& piece) {
    const Char first = style.showWhitespace ? u'!' : u' ';
    const auto isPlain = [first](Char c) { return c >= first && c < TextDirection::FirstToAsk; };
    // What is only partly seen, or follows a letter that runs to the left, goes the longer way.
    if (!isPlain(*text) || position < clipLeft || inLetter || characters.Count() + MaxRun > MaxCharacters) return 0;
    DrawRun* const run = RunFor(piece, RunKind::Text);
    if (!run) return 0;
    const uint32_t room = MaxRun - run->count < count ? MaxRun - run->count : count;
    if (!characters.Reserve(characters.Count() + room) || !advances.Reserve(advances.Count() + room)) return 0;
    const int64_t start = position;
    uint32_t added = 0;
    for (; added < room && position < clipRight && isPlain(text[added]); ++added) {
        const int32_t width = widths->Of(text[added]);
        characters.AppendReserved(text[added]);
        advances.AppendReserved(width);
        position += width;
    }
    run->count += added;
    run->width += static_cast<int32_t>(position - start);
    return added;
}

bool LineRuns::AddCharacter(Char shown, Char second, const Piece& piece, RunKind kind) {
    using TextDirection::Kind;
    const Kind direction = TextDirection::KindOf(shown);
    const bool control = direction == Kind::Control;
    const Char drawn = control ? TextDirection::MarkOf(shown) : shown;
    const Piece reversed = {piece.background, piece.foreground};
    // A letter that runs to the left is drawn with nothing but what combines with it: the system would put in its own
    // order what one call draws.
    if (direction == Kind::Letter || (inLetter && direction != Kind::Combining)) mayMerge = false;
    const int32_t width = second ? widths->OfPair(drawn, second) : widths->Of(drawn);
    const int32_t share = second ? CharWidths::FirstShare(width) : width;
    if (second && !runs.IsEmpty() && runs.Last().count + 2 > MaxRun) mayMerge = false;
    if (IsVisible(width) && (!Append(drawn, share, control ? reversed : piece, kind) ||
                             (second && !Append(second, width - share, piece, kind))))
        return false;
    if (direction != Kind::Combining) inLetter = direction == Kind::Letter;
    position += width;
    return true;
}

// In a line that is scrolled far, hidden characters are skipped many at a time where their widths allow it.
uint32_t LineRuns::SkipHidden(const Char* text, uint32_t count) {
    if (position >= clipLeft) return 0;
    const uint32_t hidden = widths->PrintableWithin(text, count, clipLeft - position);
    position += int64_t{hidden} * widths->PrintableWidth();
    return hidden;
}

// A tab is padded with spaces up to its stop, counted in whole space widths from where it begins.
bool LineRuns::AddTab(const Piece& piece) {
    const uint32_t size = TabSize();
    const auto padding = static_cast<int32_t>(size - static_cast<uint64_t>(position / spaceWidth) % size);
    const int32_t width = padding * spaceWidth;
    mayMerge = inLetter = false;
    if (!IsVisible(width)) {
        position += width;
        return true;
    }
    if (style.showWhitespace) {
        DrawRun* run = RunFor(piece, RunKind::VisibleTab);
        if (!run) return false;
        run->width = width;
        position += width;
        return true;
    }
    for (int32_t i = 0; i < padding && position < clipRight; ++i) {
        if (IsVisible(spaceWidth) && !Append(u' ', spaceWidth, piece, RunKind::Text)) return false;
        position += spaceWidth;
    }
    return true;
}

bool LineRuns::Append(Char shown, int32_t width, const Piece& piece, RunKind kind) {
    if (characters.Count() >= MaxCharacters) return true;
    DrawRun* run = RunFor(piece, kind);
    if (!run || !characters.Reserve(characters.Count() + 1) || !advances.Append(width)) return false;
    characters.AppendReserved(shown);
    ++run->count;
    run->width += width;
    return true;
}

// The last run when it takes more of this, else a new one. Only text is ever merged.
DrawRun* LineRuns::RunFor(const Piece& piece, RunKind kind) {
    if (mayMerge && kind == RunKind::Text && !runs.IsEmpty()) {
        DrawRun& last = runs.Last();
        if (last.kind == kind && last.count < MaxRun && last.foreground == piece.foreground &&
            last.background == piece.background)
            return &last;
    }
    DrawRun run = {};
    run.start = static_cast<uint32_t>(characters.Count());
    run.x = ToClient(position);
    run.foreground = piece.foreground;
    run.background = piece.background;
    run.kind = kind;
    if (!runs.Append(run)) return nullptr;
    mayMerge = true;
    return &runs.Last();
}
