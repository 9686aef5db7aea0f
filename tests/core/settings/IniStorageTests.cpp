#include "SettingsTestSupport.h"
#include "support/FailureInjection.h"
#include "support/TestRecovery.h"
#include "support/WithAdditional.h"

#include <random>

namespace {

TEST(IniSave, SerialisesSectionsSeparatedByABlankLine) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[A]\na=1\nb= 2 \n[B]\n[C]\nc=3\n"));
    EXPECT_EQ(Serialised(file), u"[A]\r\na=1\r\nb= 2 \r\n\r\n[B]\r\n\r\n[C]\r\nc=3\r\n");
    EXPECT_EQ(Serialised(IniFile()), u"");
}

TEST(IniSave, SerialiseAppends) {
    IniFile file;
    ASSERT_NE(file.AddSection(u"A"), nullptr);
    WString text;
    ASSERT_TRUE(text.Assign(u"before "));
    ASSERT_TRUE(file.Serialise(text));
    EXPECT_EQ(Str(text), u"before [A]\r\n");
}

TEST(IniSave, CommentsAndBlankLinesVanish) {
    const TemporaryFile disk;
    disk.Write("; note\n\n[S]\n; note\na=1\n\n\n; note\nb=2\n\n");
    IniFile file;
    ASSERT_TRUE(file.Load(disk.Name()));
    ASSERT_TRUE(file.Save(recoveryServices.saver, disk.Name()));
    EXPECT_EQ(disk.Read(), "[S]\r\na=1\r\nb=2\r\n");
}

TEST(IniSave, WritesUtf8WithoutByteOrderMarkOrTerminator) {
    const TemporaryFile disk;
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[\u00E4]\n\u20AC=\U0001F600"));
    ASSERT_TRUE(file.Save(recoveryServices.saver, disk.Name()));
    EXPECT_EQ(disk.Read(), "[\xC3\xA4]\r\n\xE2\x82\xAC=\xF0\x9F\x98\x80\r\n");
}

TEST(IniSave, ReplacesALongerFile) {
    const TemporaryFile disk;
    disk.Write(std::string(10000, 'x'));
    IniFile file;
    ASSERT_NE(file.AddSection(u"S"), nullptr);
    ASSERT_TRUE(file.Save(recoveryServices.saver, disk.Name()));
    EXPECT_EQ(disk.Read(), "[S]\r\n");
}

TEST(IniSave, EmptyModelMakesAnEmptyFile) {
    const TemporaryFile disk;
    disk.Write("[S]\n");
    EXPECT_TRUE(IniFile().Save(recoveryServices.saver, disk.Name()));
    EXPECT_TRUE(disk.Exists());
    EXPECT_EQ(disk.Read(), "");
}

TEST(IniSave, FileThatCannotBeCreatedFails) {
    std::u16string missing = TemporaryFile().Name();
    missing += u".missing\\file.ini";
    EXPECT_FALSE(IniFile().Save(recoveryServices.saver, missing.c_str()));
}

TEST(IniSave, TwoSectionsOfOneNameAreBothWrittenBack) {
    const TemporaryFile disk;
    disk.Write("[General]\nFontSize=12\n[General]\nFontSize=14\n");
    IniFile file;
    ASSERT_TRUE(file.Load(disk.Name()));
    EXPECT_EQ(file.FindSection(u"General")->GetInt(u"FontSize", 0), 12u);
    ASSERT_TRUE(file.Save(recoveryServices.saver, disk.Name()));
    EXPECT_EQ(disk.Read(), "[General]\r\nFontSize=12\r\n\r\n[General]\r\nFontSize=14\r\n");
}

TEST(IniLoad, ReadsUtf8) {
    const TemporaryFile disk;
    disk.Write("[\xC3\xA4]\r\n\xE2\x82\xAC=\xF0\x9F\x98\x80\r\n");
    IniFile file;
    ASSERT_TRUE(file.Load(disk.Name()));
    const Model expected = {{u"\u00E4", {{u"\u20AC", u"\U0001F600"}}}};
    EXPECT_EQ(ModelOf(file), expected);
}

// Settings and engines are in such files.
TEST(IniLoad, TheSettingUtf8ChangesNothingInIt) {
    const WithAdditional on;
    const TemporaryFile disk;
    disk.Write("[S]\na=\xC3\xA4\xFF\n");
    for (const uint32_t setting : {0u, 1u}) {
        on->Utf8 = setting;
        IniFile file;
        ASSERT_TRUE(file.Load(disk.Name()));
        EXPECT_EQ(Str(file.FindSection(u"S")->GetString(u"a", u"")), u"\u00E4\uFFFD");
    }
}

TEST(IniLoad, InvalidBytesBecomeTheReplacementCharacter) {
    const TemporaryFile disk;
    disk.Write("[S]\nk=a\xFFz\n");
    IniFile file;
    ASSERT_TRUE(file.Load(disk.Name()));
    const Model expected = {{u"S", {{u"k", u"a\uFFFDz"}}}};
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(IniLoad, AByteOrderMarkIsPassedOver) {
    const TemporaryFile disk;
    disk.Write("\xEF\xBB\xBF[S]\nk=v\n");
    IniFile file;
    EXPECT_TRUE(file.Load(disk.Name()));
    const Model expected = {{u"S", {{u"k", u"v"}}}};
    EXPECT_EQ(ModelOf(file), expected);
    ASSERT_TRUE(file.Save(recoveryServices.saver, disk.Name()));
    EXPECT_EQ(disk.Read(), "[S]\r\nk=v\r\n");
    // A second one is an ordinary character.
    disk.Write("\xEF\xBB\xBF\xEF\xBB\xBF[S]\nk=v\n");
    IniFile other;
    EXPECT_FALSE(other.Load(disk.Name()));
    EXPECT_EQ(other.StoppedLine(), 1u);
}

TEST(IniLoad, NamesTheLineThatStoppedIt) {
    const TemporaryFile disk;
    const struct {
        std::string text;
        uint32_t line;
    } cases[] = {
        {"[S]\nk=v\n", 0},
        {"", 0},
        {"\n", 0},
        {"; comment\r\n\r\nk=v\r\n[S]\r\n", 3},
        {"[S]\nk=v\nno equals sign\nnor here\n", 3},
        {"[S]\nk=v\n[T\n", 3},
        {std::string("[S]\r\nk=v\r\nn=\0m\r\n[T]\r\n", 21), 3},
        {std::string("\xEF\xBB\xBF[S]\r\nk=v\r\n\0", 14), 3},
        {std::string("\0[S]", 4), 1},
    };
    for (const auto& tried : cases) {
        disk.Write(tried.text);
        IniFile file;
        EXPECT_EQ(file.Load(disk.Name()), tried.line == 0) << tried.text;
        EXPECT_EQ(file.StoppedLine(), tried.line) << tried.text;
    }
    IniFile file;
    disk.Write("k=v");
    EXPECT_FALSE(file.Load(disk.Name()));
    disk.Write("[S]");
    EXPECT_TRUE(file.Load(disk.Name()));
    EXPECT_EQ(file.StoppedLine(), 0u);
}

TEST(IniLoad, EmptyFileIsASuccess) {
    const TemporaryFile disk;
    disk.Write("");
    IniFile file;
    EXPECT_TRUE(file.Load(disk.Name()));
    EXPECT_EQ(ModelOf(file), Model{});
}

TEST(IniLoad, MissingFileOrDirectoryLeavesTheModelUnchanged) {
    const TemporaryFile disk;
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[S]\nk=v"));
    const Model before = ModelOf(file);
    EXPECT_FALSE(file.Load(disk.Name()));
    EXPECT_FALSE(file.Load(std::filesystem::temp_directory_path().u16string().c_str()));
    EXPECT_EQ(ModelOf(file), before);
    EXPECT_FALSE(disk.Exists());
}

TEST(IniLoad, AppendsToTheModelAndKeepsWhatCameBeforeAnError) {
    const TemporaryFile disk;
    disk.Write("[B]\nb=2\nrest");
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[A]\na=1"));
    EXPECT_FALSE(file.Load(disk.Name()));
    const Model expected = {{u"A", {{u"a", u"1"}}}, {u"B", {{u"b", u"2"}, {u"rest", u""}}}};
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(IniLoad, EveryFailingFileCallLeavesTheModelUnchanged) {
    const TemporaryFile disk;
    disk.Write("[B]\nb=2\n");
    const uint64_t failures = FailEachFileCall([&] {
        IniFile file;
        EXPECT_TRUE(ParseText(file, u"[A]\na=1"));
        const Model before = ModelOf(file);
        const bool done = file.Load(disk.Name());
        if (!done) {
            EXPECT_EQ(ModelOf(file), before);
        }
        return done;
    });
    EXPECT_GE(failures, 3u); // open, size, read
}

TEST(IniLoad, EveryFailingAllocationStopsWithWhatWasRead) {
    const TemporaryFile disk;
    disk.Write("[A]\na=1\nb=2\n[B]\nc=3\n");
    const KeyList full = {{u"a", u"1"}, {u"b", u"2"}, {u"c", u"3"}};
    const uint64_t failures = FailEachAllocation([&] {
        IniFile file;
        const bool done = file.Load(disk.Name());
        const FailurePause pause;
        KeyList read;
        for (const auto& [name, keys] : ModelOf(file)) read.insert(read.end(), keys.begin(), keys.end());
        EXPECT_TRUE(std::equal(read.begin(), read.end(), full.begin()));
        EXPECT_EQ(done, read.size() == full.size());
        return done;
    });
    EXPECT_GE(failures, 10u);
}

// It is malformed also where no section can be made of it.
TEST(IniLoad, AHeaderWithoutItsEndIsAnErrorAlsoWithoutMemory) {
    FailEachAllocation([] {
        IniFile file;
        EXPECT_FALSE(ParseText(file, u"[A]\n[B"));
        EXPECT_GT(file.StoppedLine(), 0u);
        return true;
    });
}

TEST(IniSave, EveryFailingAllocationLeavesTheFile) {
    const TemporaryFile disk;
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[A]\na=1\n[B]\nb=2"));
    const uint64_t failures = FailEachAllocation([&] {
        {
            const FailurePause pause;
            disk.Write("kept");
        }
        const bool done = file.Save(recoveryServices.saver, disk.Name());
        const FailurePause pause;
        EXPECT_EQ(disk.Read(), done ? "[A]\r\na=1\r\n\r\n[B]\r\nb=2\r\n" : "kept");
        return done;
    });
    EXPECT_GE(failures, 2u);
}

TEST(IniSave, SerialiseWithoutMemoryLeavesTheText) {
    for (size_t length = 1; length < 40; ++length) { // so that each piece is the one that has no room
        const std::u16string key(length, u'k');
        IniFile file;
        ASSERT_TRUE(ParseText(file, u"[A]\n" + key + u"=1\n[B]\n" + key + u"=2"));
        FailEachAllocation([&] {
            WString text;
            {
                const FailurePause pause;
                EXPECT_TRUE(text.Assign(u"kept"));
            }
            const bool done = file.Serialise(text);
            EXPECT_EQ(Str(text), done ? u"kept[A]\r\n" + key + u"=1\r\n\r\n[B]\r\n" + key + u"=2\r\n" : u"kept");
            return done;
        });
    }
}

TEST(IniSave, EveryFailingFileCallReportsFailure) {
    const TemporaryFile disk;
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[A]\na=1"));
    const uint64_t failures = FailEachFileCall([&] { return file.Save(recoveryServices.saver, disk.Name()); });
    EXPECT_GE(failures, 4u); // open, write, cut and flush
    EXPECT_EQ(disk.Read(), "[A]\r\na=1\r\n");
}

std::u16string RandomText(std::mt19937& random) {
    static constexpr Char alphabet[] = u"[]=;\n\r \tabAB#\uFEFF\uFFFD\u00E4";
    std::u16string text(random() % 120, u' ');
    for (Char& c : text) c = alphabet[random() % (std::size(alphabet) - 1)];
    return random() % 2 ? u"[S]" + text : text;
}

TEST(IniRoundTrip, WhatWasReadIsReadAgainFromItsOwnSave) {
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        IniFile file;
        ParseText(file, RandomText(random));
        IniFile again;
        EXPECT_TRUE(ParseText(again, Serialised(file)));
        ASSERT_EQ(ModelOf(again), ModelOf(file)) << "round " << round;
    }
}

TEST(IniRoundTrip, ThroughAFile) {
    const TemporaryFile disk;
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[A]\nkey = value \nFoo\nBar=1\n\u20AC=\u00E4\n[A]\n[\U0001F600]\n=\n"));
    ASSERT_TRUE(file.Save(recoveryServices.saver, disk.Name()));
    IniFile again;
    ASSERT_TRUE(again.Load(disk.Name()));
    EXPECT_EQ(ModelOf(again), ModelOf(file));
}

TEST(IniLoad, RandomBytesNeverHarm) {
    const TemporaryFile disk;
    std::mt19937 random(2);
    for (int round = 0; round < 300; ++round) {
        std::string bytes(random() % 3000, ' ');
        for (char& c : bytes) c = static_cast<char>(random());
        if (round % 2) bytes = "[General]\n" + bytes;
        disk.Write(bytes);
        IniFile file;
        static_cast<void>(file.Load(disk.Name()));
        LoadSettings(file);
        ASSERT_TRUE(StoreSettingsToFile(file));
        IniFile again;
        ASSERT_TRUE(ParseText(again, Serialised(file)));
        ASSERT_EQ(ModelOf(again), ModelOf(file)) << "round " << round;
    }
    ReleaseSettings();
}

TEST(IniLoad, ALineOfManyMegabytesIsOneValue) {
    const TemporaryFile disk;
    const size_t length = 16u << 20;
    disk.Write("[S]\nlong=" + std::string(length, 'x') + "\nnext=1\n");
    IniFile file;
    ASSERT_TRUE(file.Load(disk.Name()));
    ASSERT_EQ(ModelOf(file)[0].second.size(), 2u);
    EXPECT_EQ(file.FindSection(u"S")->FindKey(u"long")->value.Length(), length);
    EXPECT_EQ(file.FindSection(u"S")->GetInt(u"next", 0), 1u);
}

// Every step of the reader moves on: work that grew faster than the file would show here as a test
// that does not end.
TEST(IniLoad, AMillionKeysAndSectionsAreReadInOrder) {
    std::u16string text = u"[S]\n";
    for (int i = 0; i < 500000; ++i) text += u"k=v\n";
    for (int i = 0; i < 500000; ++i) text += u"[T]\n";
    IniFile file;
    ASSERT_TRUE(ParseText(file, text));
    uint32_t keys = 0;
    for (const IniKey* key = file.sections.head->keys.head; key; key = key->next) ++keys;
    uint32_t sections = 0;
    for (const IniSection* section = file.sections.head; section; section = section->next) ++sections;
    EXPECT_EQ(keys, 500000u);
    EXPECT_EQ(sections, 500001u);
}

} // namespace
