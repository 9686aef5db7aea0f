#include "syntax/EngineChoice.h"

#include "base/Path.h"
#include "syntax/CLikeEngine.h"
#include "syntax/HtmlEngine.h"
#include "syntax/PlainEngine.h"

namespace {

SyntaxEngine* MakeEngine(const Char* name, uint32_t htmlDepth);

// Makes the engine of a definition, a plain one without; null when memory runs out.
SyntaxEngine* MakeEngineOf(const EngineDefinition* definition, uint32_t htmlDepth) {
    if (definition && definition->treatAs) definition = definition->treatAs;
    if (definition && definition->html && htmlDepth < HtmlEngine::MaxDepth) {
        return new HtmlEngine(*definition, htmlDepth, MakeEngine);
    }
    // Without keywords there is nothing to colour: see docs/oddities.md.
    if (definition && !definition->html && definition->Keywords()) return new CLikeEngine(*definition);
    return new PlainEngine(definition);
}

SyntaxEngine* MakeEngine(const Char* name, uint32_t htmlDepth) {
    return MakeEngineOf(FindEngineDefinition(name), htmlDepth);
}

} // namespace

SyntaxEngine* ChooseEngine(const Char* name, const Char* path) {
    if (!name || !*name) name = path ? Path::FileName(path) : u"";
    return MakeEngine(name, 0);
}

SyntaxEngine* ChooseEngineForFile(const Char* engineName, const Char* path) {
    if (engineName && *engineName) return ChooseEngine(engineName, path);
    const EngineDefinition* ofFile = FindEngineDefinitionOfFile(path ? Path::FileName(path) : u"");
    if (ofFile) return MakeEngineOf(ofFile, 0);
    const Char* extension = path ? Path::Extension(path) : u"";
    return ChooseEngine(*extension ? extension + 1 : extension, path);
}
