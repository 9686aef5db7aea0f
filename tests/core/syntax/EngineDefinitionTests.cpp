#include "SyntaxTestSupport.h"

#include "support/FailureInjection.h"

namespace {

std::u16string Str(const WString& text) { return {text.Text(), text.Length()}; }

std::u16string AllKeywords(const KeywordSet& set, uint32_t& count) {
    std::u16string all;
    for (uint32_t bucket = 0; bucket < KeywordSet::BucketCount; ++bucket) {
        const auto [low, high] = set.InBucket(bucket);
        for (const KeywordSet::Entry* entry = low; entry < high; ++entry, ++count) all.append(entry->text).append(u" ");
    }
    return all;
}

class EngineDefinitions : public SyntaxTest {};

} // namespace

TEST_F(EngineDefinitions, BuiltInCpp) {
    const EngineDefinition* cpp = FindEngineDefinition(u"cpp");
    ASSERT_NE(cpp, nullptr);
    EXPECT_EQ(Str(cpp->extensions), u"cpp h c cxx hxx inl hpp rc idl");
    EXPECT_TRUE(cpp->caseSensitive);
    EXPECT_FALSE(cpp->html);
    EXPECT_EQ(Str(cpp->longCommentStart), u"/*");
    EXPECT_EQ(Str(cpp->longCommentEnd), u"*/");
    EXPECT_EQ(cpp->lineCommentCount, 1u);
    EXPECT_EQ(Str(cpp->lineComments[0].marker), u"//");
    EXPECT_FALSE(cpp->lineComments[0].wordBoundary);
    EXPECT_EQ(cpp->treatAs, nullptr);
    EXPECT_EQ(cpp->previous, nullptr); // made first
}

TEST_F(EngineDefinitions, BuiltInKeywords) {
    const KeywordSet* set = FindEngineDefinition(u"cpp")->Keywords();
    ASSERT_NE(set, nullptr);
    uint32_t count = 0;
    // By bucket, which for these words is the order of their first characters.
    EXPECT_EQ(
        AllKeywords(*set, count),
        u"#define #elif #else #endif #error #if #ifdef #ifndef #import #include #line #pragma #undef asm auto "
        u"bad_cast bad_typeid bool break case catch char class const const_cast continue default delete do double "
        u"dynamic_cast else enum except explicit extern false finally float for friend goto if inline int "
        u"interface long mutable namespace new operator private protected public register reinterpret_cast return "
        u"short signed sizeof static static_cast struct switch template this throw true try type_info typedef "
        u"typeid typename union unsigned using virtual void volatile while xalloc ");
    EXPECT_EQ(count, 81u);
}

TEST_F(EngineDefinitions, BuiltInHtml) {
    const EngineDefinition* html = FindEngineDefinition(u"xui");
    ASSERT_NE(html, nullptr);
    EXPECT_EQ(html, NewestEngineDefinition());
    EXPECT_EQ(Str(html->extensions), u"htm html xml xsl xui");
    EXPECT_TRUE(html->html);
    EXPECT_EQ(html->Keywords(), nullptr);
    EXPECT_EQ(html->lineCommentCount, 0u);
    EXPECT_TRUE(html->longCommentStart.IsEmpty());
    EXPECT_EQ(html->previous, FindEngineDefinition(u"c"));
    EXPECT_EQ(html->previous->next, html);
}

TEST_F(EngineDefinitions, BuiltInColoursAreThoseOfTheSettings) {
    for (const Char* name : {u"cpp", u"html"}) {
        const EngineDefinition* definition = FindEngineDefinition(name);
        for (uint32_t i = 0; i < ColourClassCount; ++i) {
            const ColourClass& colours = definition->colours[static_cast<ColourClassIndex>(i)];
            EXPECT_EQ(colours.foreground, FirstForeground + i) << ClassNames[i];
            EXPECT_EQ(colours.background, FirstBackground + i) << ClassNames[i];
        }
    }
}

TEST_F(EngineDefinitions, EverySectionWithThePrefixGivesOne) {
    Load(u"[Engine_One]\nExtensions=one\n[eNgInE_]\nExtensions=two\n[Engine]\nExtensions=three\n"
         u"[XEngine_]\nExtensions=four\n[Engine_One]\nExtensions=five\n");
    const EngineDefinition* five = NewestEngineDefinition();
    EXPECT_EQ(Str(five->extensions), u"five");
    EXPECT_EQ(Str(five->previous->extensions), u"two");
    EXPECT_EQ(Str(five->previous->previous->extensions), u"one");
    EXPECT_TRUE(five->previous->previous->previous->html);
    EXPECT_EQ(FindEngineDefinition(u"three"), nullptr);
    EXPECT_EQ(FindEngineDefinition(u"four"), nullptr);
}

TEST_F(EngineDefinitions, ReadsEveryKey) {
    Load(u"[Engine_Q]\nExtensions=q qq\nHTML=1\nKeywords=Alpha  beta\nLongCommentStart={-\nLongCommentEnd=-}\n"
         u"CaseSensitive=0\nCommentStart=REM\nCommentStart_1=--\nCommentStart_2=;\nCommentStart_3=NB.\n");
    const EngineDefinition* q = FindEngineDefinition(u"qq");
    ASSERT_NE(q, nullptr);
    EXPECT_TRUE(q->html);
    EXPECT_FALSE(q->caseSensitive);
    EXPECT_EQ(Str(q->keywordsText), u"Alpha  beta");
    ASSERT_NE(q->Keywords(), nullptr);
    EXPECT_TRUE(q->Keywords()->CanBegin(u'b'));
    EXPECT_EQ(Str(q->longCommentStart), u"{-");
    EXPECT_EQ(Str(q->longCommentEnd), u"-}");
    ASSERT_EQ(q->lineCommentCount, 4u);
    const Char* markers[] = {u"REM", u"--", u";", u"NB."};
    const bool boundaries[] = {true, false, false, false};
    for (uint32_t i = 0; i < 4; ++i) {
        EXPECT_EQ(Str(q->lineComments[i].marker), markers[i]);
        EXPECT_EQ(q->lineComments[i].wordBoundary, boundaries[i]);
    }
}

TEST_F(EngineDefinitions, DefaultsOfAnEmptySection) {
    Load(u"[Engine_Q]\n");
    const EngineDefinition* q = NewestEngineDefinition();
    EXPECT_TRUE(q->extensions.IsEmpty());
    EXPECT_TRUE(q->caseSensitive);
    EXPECT_FALSE(q->html);
    EXPECT_EQ(q->Keywords(), nullptr);
    EXPECT_EQ(q->lineCommentCount, 0u);
    EXPECT_EQ(q->treatAs, nullptr);
}

TEST_F(EngineDefinitions, ColoursFallBackToTheSettings) {
    Load(u"[Engine_Q]\nExtensions=q\nTextFg=#010203\nCommentBg=red\nHtmlPunctBg=#ffffff\nStringFg=#12345\n");
    const EngineDefinition* q = FindEngineDefinition(u"q");
    EXPECT_EQ(q->colours[ColourClassIndex::Text].foreground, 0x030201u);
    EXPECT_EQ(q->colours[ColourClassIndex::Text].background, FirstBackground + 0);
    EXPECT_EQ(q->colours[ColourClassIndex::Comment].foreground, FirstForeground + 1);
    EXPECT_EQ(q->colours[ColourClassIndex::Comment].background, 0u);
    EXPECT_EQ(q->colours[ColourClassIndex::String].foreground, 0u);
    EXPECT_EQ(q->colours[ColourClassIndex::HtmlPunct].background, 0xFFFFFFu);
}

TEST_F(EngineDefinitions, EveryColourKeyIsRead) {
    const Char* const keys[] = {u"TextFg",
                                u"TextBg",
                                u"CommentFg",
                                u"CommentBg",
                                u"LongCommentFg",
                                u"LongCommentBg",
                                u"StringFg",
                                u"StringBg",
                                u"KeywordFg",
                                u"KeywordBg",
                                u"NumberFg",
                                u"NumberBg",
                                u"HtmlTagFg",
                                u"HtmlTagBg",
                                u"HtmlAttrFg",
                                u"HtmlAttrBg",
                                u"HtmlAttrValueFg",
                                u"HtmlAttrValueBg",
                                u"HtmlAttrQuotedValueFg",
                                u"HtmlAttrQuotedValueBg",
                                u"HtmlCommentFg",
                                u"HtmlCommentBg",
                                u"HtmlPunctFg",
                                u"HtmlPunctBg"};
    std::u16string section = u"[Engine_Q]\nExtensions=q\n";
    for (size_t i = 0; i < 24; ++i) {
        section.append(keys[i]).append(u"=#0000");
        section += static_cast<Char>(u'1' + i / 10);
        section += static_cast<Char>(u'0' + i % 10);
        section += u'\n';
    }
    Load(section);
    const EngineDefinition* q = FindEngineDefinition(u"q");
    for (uint32_t i = 0; i < 24; ++i) {
        const ColourClass& colours = q->colours[static_cast<ColourClassIndex>(i / 2)];
        const Colour expected = ((1 + i / 10) * 16 + i % 10) << 16;
        EXPECT_EQ(i % 2 ? colours.background : colours.foreground, expected) << i;
    }
}

TEST_F(EngineDefinitions, CommentStartsEndAtTheFirstAbsentOne) {
    Load(u"[Engine_A]\nExtensions=a\nCommentStart=;\nCommentStart_1=!\nCommentStart_3=%\n"
         u"[Engine_B]\nExtensions=b\nCommentStart_1=!\n"
         u"[Engine_C]\nExtensions=c1\nCommentStart_2=!\n");
    EXPECT_EQ(FindEngineDefinition(u"a")->lineCommentCount, 2u);
    // The count goes by the highest one set, with an empty one before it.
    EXPECT_EQ(FindEngineDefinition(u"b")->lineCommentCount, 2u);
    EXPECT_TRUE(FindEngineDefinition(u"b")->lineComments[0].marker.IsEmpty());
    EXPECT_EQ(FindEngineDefinition(u"c1")->lineCommentCount, 0u);
}

TEST_F(EngineDefinitions, LongCommentNeedsBothMarkers) {
    Load(u"[Engine_A]\nExtensions=a\nLongCommentStart=(*\n[Engine_B]\nExtensions=b\nLongCommentEnd=*)\n");
    EXPECT_TRUE(FindEngineDefinition(u"a")->longCommentStart.IsEmpty());
    EXPECT_TRUE(FindEngineDefinition(u"b")->longCommentEnd.IsEmpty());
}

TEST_F(EngineDefinitions, TreatAsUsesNoFurtherKeys) {
    Load(u"[Engine_A]\nExtensions=a\nTreatAs=CPP\nCaseSensitive=0\nHTML=1\nKeywords=x\nCommentStart=;\n"
         u"LongCommentStart=<\nLongCommentEnd=>\n");
    const EngineDefinition* a = FindEngineDefinition(u"a");
    EXPECT_EQ(a->treatAs, FindEngineDefinition(u"cpp"));
    EXPECT_FALSE(a->caseSensitive);
    EXPECT_FALSE(a->html);
    EXPECT_TRUE(a->keywordsText.IsEmpty());
    EXPECT_EQ(a->Keywords(), nullptr);
    EXPECT_EQ(a->lineCommentCount, 0u);
    EXPECT_TRUE(a->longCommentStart.IsEmpty());
}

TEST_F(EngineDefinitions, TreatAsLooksAtTheNewestFirstAndAtItself) {
    Load(u"[Engine_A]\nExtensions=cpp\nKeywords=x\n[Engine_B]\nExtensions=b\nTreatAs=cpp\n"
         u"[Engine_C]\nExtensions=me\nTreatAs=me\n");
    EXPECT_EQ(FindEngineDefinition(u"b")->treatAs, FindEngineDefinition(u"cpp"));
    EXPECT_EQ(FindEngineDefinition(u"me")->treatAs, FindEngineDefinition(u"me"));
}

TEST_F(EngineDefinitions, UnknownTreatAsIsIgnored) {
    // The later section is not known yet, and an empty name names nothing.
    Load(u"[Engine_A]\nExtensions=a\nTreatAs=later\nKeywords=x\n[Engine_L]\nExtensions=later\n"
         u"[Engine_B]\nExtensions=b  b2\nTreatAs=\nKeywords=y\n");
    EXPECT_EQ(FindEngineDefinition(u"a")->treatAs, nullptr);
    EXPECT_NE(FindEngineDefinition(u"a")->Keywords(), nullptr);
    EXPECT_EQ(FindEngineDefinition(u"b")->treatAs, nullptr);
    EXPECT_NE(FindEngineDefinition(u"b")->Keywords(), nullptr);
}

TEST_F(EngineDefinitions, NamesAreWholeWords) {
    Load(u"[Engine_A]\nExtensions=alpha Makefile.in z\n");
    EXPECT_NE(FindEngineDefinition(u"ALPHA"), nullptr);
    EXPECT_NE(FindEngineDefinition(u"makefile.IN"), nullptr);
    EXPECT_NE(FindEngineDefinition(u"Z"), nullptr);
    for (const Char* name : {u"alph", u"alphaM", u"pha", u"in", u"", u" ", u"alpha Makefile.in", u"\u00E4"}) {
        EXPECT_EQ(FindEngineDefinition(name), nullptr);
    }
}

TEST_F(EngineDefinitions, ReleasedOnesAreGone) {
    ReleaseEngineDefinitions();
    EXPECT_EQ(NewestEngineDefinition(), nullptr);
    EXPECT_EQ(FindEngineDefinition(u"cpp"), nullptr);
    ReleaseEngineDefinitions();
}

TEST_F(EngineDefinitions, LoadingAgainReplacesThem) {
    Load(u"[Engine_A]\nExtensions=a\n");
    Load(u"[Engine_B]\nExtensions=b\n");
    EXPECT_EQ(FindEngineDefinition(u"a"), nullptr);
    EXPECT_NE(FindEngineDefinition(u"b"), nullptr);
}

TEST_F(EngineDefinitions, WhatThereIsNoMemoryForIsLeftOut) {
    IniFile file;
    std::u16string text = u"[Engine_A]\nExtensions=a\nKeywords=x y\nCommentStart=;\nCommentStart_1=#\n"
                          u"LongCommentStart=(*\nLongCommentEnd=*)\n[Engine_B]\nExtensions=b\nTreatAs=a\n";
    ASSERT_TRUE(file.Parse(text.data()));
    FailEachAllocation([&] {
        LoadEngineDefinitions(file);
        bool complete = true;
        for (const Char* name : {u"cpp", u"html", u"a", u"b"}) complete = complete && FindEngineDefinition(name);
        // One thing failed, so at most one definition is missing, and no half-made one is left.
        uint32_t count = 0;
        for (const EngineDefinition* d = NewestEngineDefinition(); d; d = d->previous, ++count) {
            EXPECT_FALSE(d->extensions.IsEmpty());
            EXPECT_TRUE(d->lineCommentCount == 0 || d->longCommentEnd.Length() == 2);
        }
        EXPECT_GE(count, 3u);
        const EngineDefinition* a = FindEngineDefinition(u"a");
        return complete && a->Keywords();
    });
}
