#include "SettingsTestSupport.h"
#include "support/FailureInjection.h"

namespace {

TEST(IniModel, FieldsHaveTheFixedOrder) {
    EXPECT_LT(offsetof(IniKey, name), offsetof(IniKey, value));
    EXPECT_LT(offsetof(IniKey, value), offsetof(IniKey, next));
    EXPECT_LT(offsetof(IniKey, next), offsetof(IniKey, previous));
    EXPECT_LT(offsetof(IniSection, name), offsetof(IniSection, next));
    EXPECT_LT(offsetof(IniSection, next), offsetof(IniSection, previous));
    EXPECT_LT(offsetof(IniSection, previous), offsetof(IniSection, keys));
}

TEST(IniModel, LookUpsAreExactAndReturnTheFirstMatch) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[general]\nk=0\n[General]\nKey=1\nkey=2\nkey=3\n[General]\nkey=4"));
    IniSection* section = file.FindSection(u"General");
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(section, file.sections.head->next);
    EXPECT_EQ(Str(section->FindKey(u"key")->value), u"2");
    EXPECT_EQ(Str(section->FindKey(u"Key")->value), u"1");
    EXPECT_EQ(section->FindKey(u"KEY"), nullptr);
    EXPECT_EQ(section->FindKey(u"ke"), nullptr);
    EXPECT_EQ(section->FindKey(u"key2"), nullptr);
    EXPECT_EQ(file.FindSection(u"GENERAL"), nullptr);
    EXPECT_EQ(file.FindSection(u"Gen"), nullptr);
}

TEST(IniModel, GetStringReturnsTheValueOrTheDefaultItself) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[S]\nk= v \nempty=\n"));
    const IniSection* section = file.FindSection(u"S");
    const Char* fallback = u"default";
    EXPECT_EQ(Str(section->GetString(u"k", fallback)), u" v ");
    EXPECT_EQ(Str(section->GetString(u"empty", fallback)), u"");
    EXPECT_EQ(section->GetString(u"absent", fallback), fallback);
    EXPECT_EQ(section->GetString(u"absent", nullptr), nullptr);
}

TEST(IniModel, GetStringIntoYieldsTheEmptyStringForAnAbsentKey) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[S]\nk=v\n"));
    WString target;
    EXPECT_TRUE(file.FindSection(u"S")->GetStringInto(target, u"k"));
    EXPECT_EQ(Str(target), u"v");
    EXPECT_TRUE(file.FindSection(u"S")->GetStringInto(target, u"absent"));
    EXPECT_TRUE(target.IsEmpty());
}

TEST(IniModel, GetIntReadsLeadingDigitsOnly) {
    const std::pair<const Char*, uint32_t> cases[] = {
        {u"12px", 12},
        {u" 5", 0},
        {u"", 0},
        {u"-1", 0},
        {u"+1", 0},
        {u"0x10", 0},
        {u"007", 7},
        {u"1 2", 1},
        {u"\t1", 0},
        {u"4294967295", 4294967295u},
        {u"4294967296", 0},
        {u"4294967301", 5},
        {u"99999999999", 1215752191u},
    };
    for (const auto& [value, expected] : cases) {
        IniSection section;
        ASSERT_TRUE(section.SetString(u"k", value));
        EXPECT_EQ(section.GetInt(u"k", 77), expected) << testing::PrintToString(Str(value));
    }
    EXPECT_EQ(IniSection().GetInt(u"absent", 77), 77u);
}

TEST(IniModel, SetStringReplacesTheFirstMatchInPlaceAndAppendsANewKey) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[S]\na=1\nb=2\nb=3\nc=4"));
    IniSection* section = file.FindSection(u"S");
    EXPECT_TRUE(section->SetString(u"b", u"new"));
    EXPECT_TRUE(section->SetString(u"B", u"other"));
    const Model expected = {{u"S", {{u"a", u"1"}, {u"b", u"new"}, {u"b", u"3"}, {u"c", u"4"}, {u"B", u"other"}}}};
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(IniModel, SetStringAcceptsTheOldValueItself) {
    IniSection section;
    ASSERT_TRUE(section.SetString(u"k", u"value"));
    EXPECT_TRUE(section.SetString(u"k", section.GetString(u"k", nullptr)));
    EXPECT_EQ(Str(section.GetString(u"k", nullptr)), u"value");
}

TEST(IniModel, SetIntWritesUnsignedDecimal) {
    IniSection section;
    EXPECT_TRUE(section.SetInt(u"a", 4294967295u));
    EXPECT_TRUE(section.SetInt(u"b", 0));
    EXPECT_EQ(Str(section.GetString(u"a", u"")), u"4294967295");
    EXPECT_EQ(Str(section.GetString(u"b", u"")), u"0");
}

TEST(IniModel, AppendKeyLinksAfterTheLastOne) {
    IniFile file;
    IniSection* section = file.AddSection(u"S");
    for (const Char* name : {u"b", u"a", u"b"}) {
        auto* key = new IniKey;
        ASSERT_TRUE(key->name.Assign(name));
        section->AppendKey(key);
    }
    const Model expected = {{u"S", {{u"b", u""}, {u"a", u""}, {u"b", u""}}}};
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(IniModel, TakeKeysReplacesInPlaceAndAppends) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[S]\na=1\nb=2\nb=3"));
    IniSection from;
    for (const Char* name : {u"c", u"b", u"d"}) ASSERT_TRUE(from.SetString(name, u"new"));
    file.FindSection(u"S")->TakeKeys(from);
    const Model expected = {{u"S", {{u"a", u"1"}, {u"b", u"new"}, {u"b", u"3"}, {u"c", u"new"}, {u"d", u"new"}}}};
    EXPECT_EQ(ModelOf(file), expected);
    EXPECT_TRUE(from.keys.IsEmpty());
}

TEST(IniModel, AppendSectionDoesNotLookForAnExistingName) {
    IniFile file;
    IniSection* first = file.AddSection(u"S");
    auto* second = new IniSection;
    ASSERT_TRUE(second->name.Assign(u"S"));
    file.AppendSection(second);
    EXPECT_EQ(file.FindSection(u"S"), first);
    const Model expected = {{u"S", {}}, {u"S", {}}};
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(IniModel, RemoveSectionsDestroysEveryExactMatch) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[Tool]\na=1\n[tool]\nb=2\n[Tool]\n[Tools]\nc=3\n[Tool]\nd=4"));
    file.RemoveSections(u"Tool");
    const Model expected = {{u"tool", {{u"b", u"2"}}}, {u"Tools", {{u"c", u"3"}}}};
    EXPECT_EQ(ModelOf(file), expected);
    file.RemoveSections(u"absent");
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(IniModel, ClearDestroysEverything) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[A]\na=1\n[B]\nb=2"));
    file.Clear();
    EXPECT_EQ(ModelOf(file), Model{});
    EXPECT_TRUE(ParseText(file, u"[C]\nc=3"));
    EXPECT_EQ(ModelOf(file).size(), 1u);
}

TEST(IniModel, EveryFailingAllocationOfAChangeLeavesTheModel) {
    const uint64_t failures = FailEachAllocation([] {
        IniFile file;
        {
            const FailurePause pause;
            EXPECT_TRUE(ParseText(file, u"[S]\nk=1"));
        }
        IniSection* section = file.FindSection(u"S");
        const std::u16string longer(500, u'x');
        const bool done = section->SetString(u"k", longer.c_str()) && section->SetString(u"new", longer.c_str()) &&
                          section->SetInt(u"number", 5) && file.AddSection(u"T") != nullptr;
        const FailurePause pause;
        if (done) return true;
        const KeyList kept = ModelOf(file)[0].second;
        const std::u16string first = kept[0].second;
        EXPECT_TRUE(first == u"1" || first == longer);
        if (kept.size() > 1) {
            EXPECT_EQ(kept[1].second, longer);
        }
        if (kept.size() > 2) {
            EXPECT_EQ(kept[2].second, u"5");
        }
        EXPECT_EQ(ModelOf(file).size(), 1u);
        return false;
    });
    EXPECT_GE(failures, 8u);
}

TEST(NextLine, WithoutMemoryStaysWhereItWas) {
    const uint64_t failures = FailEachAllocation([] {
        WString line;
        uint32_t position = 0;
        const bool done = NextLine(u"abc\ndef", position, line);
        if (!done) {
            EXPECT_EQ(position, 0u);
        }
        return done;
    });
    EXPECT_EQ(failures, 1u);
}

} // namespace
