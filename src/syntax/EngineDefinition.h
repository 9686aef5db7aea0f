#pragma once

#include "base/Heap.h"
#include "base/WString.h"
#include "syntax/KeywordSet.h"

class IniFile;

// The colour classes of a definition, in the order of their keys in the settings file.
enum class ColourClassIndex : uint32_t {
    Text,
    Comment,
    LongComment,
    String,
    Keyword,
    Number,
    HtmlTag,
    HtmlAttr,
    HtmlAttrValue,
    HtmlAttrQuotedValue,
    HtmlComment,
    HtmlPunct,
};
constexpr uint32_t ColourClassCount = 12;

// The background is also the colour of the brush that fills the rest of a line.
struct ColourClass {
    Colour foreground = 0;
    Colour background = 0;
};

// One pair of colours for each class.
class ColourScheme {
public:
    const ColourClass& operator[](ColourClassIndex index) const { return classes[static_cast<uint32_t>(index)]; }
    ColourClass& operator[](ColourClassIndex index) { return classes[static_cast<uint32_t>(index)]; }

private:
    ColourClass classes[ColourClassCount];
};

struct LineCommentStart {
    WString marker;
    // Set when the marker ends with an ASCII letter: no such letter may then follow it.
    bool wordBoundary = false;
};

// What one kind of file looks like.
struct EngineDefinition : HeapObject {
    static constexpr uint32_t MaxLineComments = 4;

    WString extensions; // names separated by single spaces
    WString fileNames;  // the same, of files that go by their whole name though they have an extension
    WString keywordsText;
    bool caseSensitive = true;
    WString longCommentStart;
    WString longCommentEnd;
    LineCommentStart lineComments[MaxLineComments];
    uint32_t lineCommentCount = 0;
    ColourScheme colours;
    bool html = false;
    EngineDefinition* next = nullptr;     // newer
    EngineDefinition* previous = nullptr; // older
    const EngineDefinition* treatAs = nullptr;

    EngineDefinition() = default;
    ~EngineDefinition() { delete keywords; }
    EngineDefinition(const EngineDefinition&) = delete;
    EngineDefinition& operator=(const EngineDefinition&) = delete;

    // Stores line-comment start `index`; the count in use becomes one more than it. False without memory.
    bool SetLineComment(uint32_t index, const Char* marker);
    // The words of keywordsText as a set, which the definition owns; null when there are none or memory runs out.
    // It is made when it is first asked for: few of the definitions of a settings file are used in one run.
    const KeywordSet* Keywords() const;

private:
    mutable KeywordSet* keywords = nullptr;
};

// Replaces the process-wide definitions by the built-in ones and those of the file's "Engine_"
// sections. Call it after the settings were loaded; what there is no memory for is left out.
void LoadEngineDefinitions(const IniFile& file);
// Destroys every definition, oldest first. Engines made from them must not be used any more.
void ReleaseEngineDefinitions();

// The newest definition that lists `name`, letter case ignored; null when there is none.
const EngineDefinition* FindEngineDefinition(const Char* name);
// The newest definition that lists `fileName`, which has no folder, as a whole name; null when there is none.
const EngineDefinition* FindEngineDefinitionOfFile(const Char* fileName);
// The newest definition; the others follow through `previous`. Null before anything was loaded.
const EngineDefinition* NewestEngineDefinition();
