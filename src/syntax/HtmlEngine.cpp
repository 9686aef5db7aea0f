#include "syntax/HtmlEngine.h"

#include "base/Scan.h"
#include "syntax/HtmlMachine.h"

#include <iterator>

using namespace HtmlState;

namespace {

ColourClassIndex ClassOfKind(uint32_t kind) {
    switch (kind) {
    case Tag:
    case ScriptTag:
        return ColourClassIndex::HtmlTag;
    case Attribute:
        return ColourClassIndex::HtmlAttr;
    case Value:
        return ColourClassIndex::HtmlAttrValue;
    case SingleQuoted:
    case DoubleQuoted:
        return ColourClassIndex::HtmlAttrQuotedValue;
    case Comment:
        return ColourClassIndex::HtmlComment;
    case Punctuation:
        return ColourClassIndex::HtmlPunct;
    default:
        return ColourClassIndex::Text;
    }
}

constexpr Char ScriptEnd[] = u"</script";
constexpr Char PhpEnd[] = u"?>";

bool IsPhp(uint32_t state) { return state >= PhpContent; }

// The state of a line end inside embedded code. There is room for the states 0 and 1 of the inner
// engine; markup inside embedded code starts each line between tags.
uint32_t EmbeddedState(uint32_t state, uint32_t innerState) {
    return (IsPhp(state) ? PhpContent : ScriptContent) + (innerState == 1 ? 1 : 0);
}
uint32_t InnerState(uint32_t state) { return state - (IsPhp(state) ? PhpContent : ScriptContent); }

// States that no line of this engine ends in come from another engine's lines.
uint32_t KnownState(uint32_t state) {
    const bool known = state >= Tag && state < Count && state != Punctuation;
    return known ? state : Between;
}

// The inner engine has stopped before the end of the line. False when that is not
// where its code ends: it stops nowhere else, unless memory ran out.
template <class Output> bool EndOfCode(HtmlMachine<Output>& machine, Output& out) {
    const bool php = IsPhp(machine.state);
    if (!(php ? machine.IsNext(PhpEnd) : machine.IsNext(ScriptEnd, true))) return false;
    machine.state = Between;
    machine.returnState = Tag;
    if (!php) return true; // the closing tag is taken like any other
    if (!out.Start(Tag)) return false;
    machine.TakeTo(machine.at + std::size(PhpEnd) - 1);
    return true;
}

// What a scan makes of a run: nothing.
struct NoRuns {
    static bool Start(uint32_t) { return true; }
    static uint32_t Kind() { return RunList::NoKind; }
    static void Take(size_t) {}
};

} // namespace

// Makes the runs of a line.
class HtmlEngine::Colouring {
public:
    static constexpr bool TagNameEndsAtLineFeed = false;

    Colouring(HtmlEngine& owner, const Char* lineText, uint32_t lineOffset)
        : engine(owner), runs(owner.runs), text(lineText), offset(lineOffset) {}

    bool Start(uint32_t kind) { return runs.Start(kind, engine.definition.colours[ClassOfKind(kind)]); }
    uint32_t Kind() const { return runs.Kind(); }
    void Take(size_t count) { runs.Extend(count); }

    bool Embedded(HtmlMachine<Colouring>& machine) {
        SyntaxEngine* inner = engine.InnerEngine(machine.state);
        if (!inner) return false;
        uint32_t innerState = InnerState(machine.state);
        ColouredLine line;
        const auto passed = static_cast<uint32_t>(machine.at - text);
        const auto left = static_cast<uint32_t>(machine.end - machine.at);
        const uint32_t coloured = inner->ColourLine(offset + passed, machine.at, left, innerState, line);
        if (!runs.AppendAll(line)) return false;
        machine.at += coloured;
        machine.state = EmbeddedState(machine.state, innerState);
        return coloured == left || EndOfCode(machine, *this);
    }

private:
    HtmlEngine& engine;
    RunList& runs;
    const Char* text;
    uint32_t offset;
};

// Carries the state through text of any number of lines.
class HtmlEngine::Scanning : public NoRuns {
public:
    static constexpr bool TagNameEndsAtLineFeed = true;

    Scanning(HtmlEngine& owner, const Char* wholeText, uint32_t wholeLength)
        : engine(owner), text(wholeText), length(wholeLength) {}

    bool Embedded(HtmlMachine<Scanning>& machine) {
        SyntaxEngine* inner = engine.InnerEngine(machine.state);
        if (!inner) return false;
        uint32_t stopped = length;
        const auto start = static_cast<uint32_t>(machine.at - text);
        const uint32_t innerState = inner->ScanState(text, length, start, InnerState(machine.state), stopped);
        machine.at = text + stopped;
        machine.state = stopped == length ? EmbeddedState(machine.state, innerState) : Between;
        return true;
    }

private:
    HtmlEngine& engine;
    const Char* text;
    uint32_t length;
};

// Carries the state through one line as colouring does.
class HtmlEngine::LineScanning : public NoRuns {
public:
    static constexpr bool TagNameEndsAtLineFeed = false;

    explicit LineScanning(HtmlEngine& owner) : engine(owner) {}

    bool Embedded(HtmlMachine<LineScanning>& machine) {
        SyntaxEngine* inner = engine.InnerEngine(machine.state);
        if (!inner) return false;
        uint32_t stopped = 0;
        const auto left = static_cast<uint32_t>(machine.end - machine.at);
        const uint32_t innerState = inner->ScanLinesToEnd(machine.at, left, InnerState(machine.state), stopped);
        machine.at += stopped;
        machine.state = EmbeddedState(machine.state, innerState);
        return stopped == left || EndOfCode(machine, *this);
    }

private:
    HtmlEngine& engine;
};

HtmlEngine::HtmlEngine(const EngineDefinition& engineDefinition, uint32_t htmlDepth, EngineMaker innerEngines)
    : definition(engineDefinition), depth(htmlDepth), makeEngine(innerEngines) {
    tagStart.Add(u'<');
}

HtmlEngine::~HtmlEngine() {
    if (script) script->Release();
    if (php) php->Release();
}

SyntaxEngine* HtmlEngine::InnerEngine(uint32_t state) {
    SyntaxEngine*& inner = IsPhp(state) ? php : script;
    if (inner) return inner;
    SyntaxEngine* made = makeEngine(IsPhp(state) ? u"phps" : u"js", depth + 1);
    if (!made) return nullptr;
    // Without its end marker the engine would take all the rest of the page for its code.
    if (made->SetEndMarker(IsPhp(state) ? PhpEnd : ScriptEnd))
        inner = made;
    else
        made->Release();
    return inner;
}

uint32_t HtmlEngine::ColourLine(uint32_t offset, const Char* text, uint32_t length, uint32_t& state,
                                ColouredLine& line) {
    runs.Clear();
    line = {};
    Colouring output(*this, text, offset);
    HtmlMachine<Colouring> machine(output, tagStart, text, text + length, {KnownState(state), returnState});
    if (!machine.Run()) return 0;
    state = machine.state;
    returnState = machine.returnState;
    line.spans = runs.Spans();
    line.count = runs.Count();
    if (state == Comment) line.fill = definition.colours[ColourClassIndex::HtmlComment].background;
    return length;
}

uint32_t HtmlEngine::ScanState(const Char* text, uint32_t length, uint32_t start, uint32_t state, uint32_t& stopped) {
    // As in CLikeEngine: a start past the end is the start of the text, in the normal state.
    const bool startsOver = start > length;
    // How a tag that is open at the start goes on after a value is not known here: as an ordinary one.
    Scanning output(*this, text, length);
    HtmlMachine<Scanning> machine(output, tagStart, text + (startsOver ? 0 : start), text + length,
                                  {startsOver ? Between : KnownState(state), Tag});
    machine.Run();
    stopped = static_cast<uint32_t>(machine.at - text);
    return machine.state;
}

uint32_t HtmlEngine::ScanLinesToEnd(const Char* text, uint32_t length, uint32_t state, uint32_t& stopped) {
    const Char* at = text;
    const Char* const end = text + length;
    state = KnownState(state);
    while (at < end) {
        const Char* lineEnd = at + Scan::FindLineFeed(at, static_cast<size_t>(end - at));
        if (lineEnd < end) ++lineEnd;
        // Line by line, and not as ScanState: a tag's name ends at a line feed there, and not when a line is coloured.
        LineScanning output(*this);
        HtmlMachine<LineScanning> machine(output, tagStart, at, lineEnd, {state, returnState});
        const bool done = machine.Run();
        at = machine.at;
        state = machine.state;
        returnState = machine.returnState;
        if (!done) break;
    }
    stopped = static_cast<uint32_t>(at - text);
    return state;
}

void HtmlEngine::SetHighlight(uint32_t index, const HighlightRange* range) {
    if (script) script->SetHighlight(index, range);
    if (php) php->SetHighlight(index, range);
}

// Both have the same.
HighlightRange HtmlEngine::Highlight(uint32_t index) const {
    const SyntaxEngine* const embedded = script ? script : php;
    return embedded ? embedded->Highlight(index) : HighlightRange();
}
