#include "SyntaxTestSupport.h"

#include "support/FailureInjection.h"
#include "syntax/EngineChoice.h"

namespace {

// The kind of an engine, as it shows in its behaviour.
std::string Kind(const EngineHandle& engine) {
    if (!engine) return "none";
    if (engine->BraceCharacters() == std::u16string_view(u"{}()[]<>")) return "html";
    return Runs(*engine, u"1") == "number(1)" ? "c-like" : "plain";
}

EngineHandle ForFile(const Char* engineName, const Char* path) {
    return EngineHandle(ChooseEngineForFile(engineName, path));
}

class EngineChoice : public SyntaxTest {};

} // namespace

TEST_F(EngineChoice, ByName) {
    EXPECT_EQ(Kind(Choose(u"cpp")), "c-like");
    EXPECT_EQ(Kind(Choose(u"IDL")), "c-like");
    EXPECT_EQ(Kind(Choose(u"html")), "html");
    EXPECT_EQ(Kind(Choose(u"txt")), "plain");
    EXPECT_EQ(Kind(Choose(u"")), "plain");
    EXPECT_EQ(Kind(Choose(nullptr)), "plain");
}

TEST_F(EngineChoice, AFileNamedFooCppGetsTheCLikeEngine) {
    EXPECT_EQ(Kind(ForFile(nullptr, u"C:\\src\\foo.CPP")), "c-like");
    EXPECT_EQ(Kind(ForFile(u"", u"C:\\src\\foo.CPP")), "c-like");
}

TEST_F(EngineChoice, AFileWithoutExtensionGoesByItsWholeName) {
    Load(u"[Engine_Make]\nExtensions=mak makefile\nKeywords=all\n");
    EXPECT_EQ(Kind(ForFile(nullptr, u"C:\\src\\Makefile")), "c-like");
    EXPECT_EQ(Kind(Choose(nullptr, u"C:\\src\\Makefile")), "c-like");
    EXPECT_EQ(Kind(ForFile(nullptr, u"Makefile")), "c-like");
    EXPECT_EQ(Kind(ForFile(nullptr, u"C:\\makefile\\other")), "plain");
}

TEST_F(EngineChoice, TheNameWinsOverThePath) {
    EXPECT_EQ(Kind(Choose(u"html", u"C:\\cpp")), "html");
    EXPECT_EQ(Kind(ForFile(u"html", u"a.cpp")), "html");
    // With an extension the file name is not tried.
    Load(u"[Engine_A]\nExtensions=foo.bar\nKeywords=x\n");
    EXPECT_EQ(Kind(ForFile(nullptr, u"C:\\foo.bar")), "plain");
    EXPECT_EQ(Kind(Choose(nullptr, u"C:\\foo.bar")), "c-like");
    EXPECT_EQ(Kind(ForFile(nullptr, u"C:\\a.cpp\\readme")), "plain");
    EXPECT_EQ(Kind(ForFile(nullptr, nullptr)), "plain");
}

TEST_F(EngineChoice, ASectionMayNameAFileThatHasAnExtension) {
    Load(u"[Engine_A]\nExtensions=a\nFileNames=Lists.html b.txt\nKeywords=x\n"
         u"[Engine_B]\nFileNames=b.txt c.txt\nTreatAs=htm\n");
    EXPECT_EQ(Kind(ForFile(nullptr, u"C:\\src\\LISTS.html")), "c-like") << "before its extension";
    EXPECT_EQ(Kind(ForFile(nullptr, u"b.txt")), "html") << "the last section gets it";
    EXPECT_EQ(Kind(ForFile(nullptr, u"c.txt")), "html");
    EXPECT_EQ(Kind(ForFile(nullptr, u"C:\\b.txt\\d.txt")), "plain");
    EXPECT_EQ(Kind(ForFile(nullptr, u"other.html")), "html");
    EXPECT_EQ(Kind(ForFile(u"txt", u"Lists.html")), "plain") << "a name that is given comes first";
    EXPECT_EQ(Kind(Choose(u"b.txt")), "plain") << "it is the name of a file only";
}

TEST_F(EngineChoice, TheLastSectionThatListsAnExtensionWins) {
    Load(u"[Engine_A]\nExtensions=cpp\nKeywords=one\n[Engine_B]\nExtensions=cpp\nKeywords=two\n");
    EXPECT_EQ(Runs(*Choose(u"cpp"), u"one two"), "text(one ) keyword(two)");
    EXPECT_EQ(Runs(*Choose(u"h"), u"int two"), "keyword(int) text( two)");
}

TEST_F(EngineChoice, ADefinitionWithoutKeywordsColoursNothing) {
    Load(u"[Engine_A]\nExtensions=cpp\nCommentStart=//\nTextFg=#111111\n");
    const EngineHandle engine = Choose(u"cpp");
    EXPECT_EQ(Kind(engine), "plain");
    ColouredLine line;
    uint32_t state = 0;
    ASSERT_EQ(engine->ColourLine(0, u"int x; // y", 11, state, line), 11u);
    ASSERT_EQ(line.count, 1u);
    EXPECT_EQ(line.spans[0].foreground, 0x111111u);
    EXPECT_EQ(line.spans[0].length, 11u);
}

TEST_F(EngineChoice, TreatAsTakesOneStepOnly) {
    Load(u"[Engine_A]\nExtensions=a\nTreatAs=cpp\n[Engine_B]\nExtensions=b\nTreatAs=a\n"
         u"[Engine_C]\nExtensions=me\nTreatAs=me\nKeywords=x\n[Engine_D]\nExtensions=d\nTreatAs=htm\n");
    EXPECT_EQ(Kind(Choose(u"a")), "c-like");
    EXPECT_EQ(Kind(Choose(u"b")), "plain");
    EXPECT_EQ(Kind(Choose(u"me")), "plain");
    EXPECT_EQ(Kind(Choose(u"d")), "html");
}

TEST_F(EngineChoice, HtmlComesBeforeKeywords) {
    Load(u"[Engine_A]\nExtensions=a\nHTML=1\nKeywords=x\n");
    EXPECT_EQ(Kind(Choose(u"a")), "html");
}

TEST_F(EngineChoice, AnEngineHasOneReference) {
    for (const Char* name : {u"cpp", u"html", u"txt"}) {
        SyntaxEngine* engine = ChooseEngine(name, nullptr);
        ASSERT_NE(engine, nullptr);
        EXPECT_EQ(engine->AddRef(), 2u);
        EXPECT_EQ(engine->Release(), 1u);
        EXPECT_EQ(engine->Release(), 0u);
    }
}

TEST_F(EngineChoice, BraceCharacters) {
    EXPECT_EQ(Choose(u"cpp")->BraceCharacters(), std::u16string_view(u"{}()[]"));
    EXPECT_EQ(Choose(u"txt")->BraceCharacters(), std::u16string_view(u"{}()[]"));
    EXPECT_EQ(Choose(u"html")->BraceCharacters(), std::u16string_view(u"{}()[]<>"));
}

TEST_F(EngineChoice, WithoutDefinitionsThereIsThePlainEngine) {
    ReleaseEngineDefinitions();
    EXPECT_EQ(Kind(Choose(u"cpp")), "plain");
}

TEST_F(EngineChoice, NoneWithoutMemory) {
    for (const Char* name : {u"cpp", u"html", u"txt"}) {
        const uint64_t failures = FailEachAllocation([&] { return Choose(name) != nullptr; });
        EXPECT_GE(failures, 1u);
    }
}
