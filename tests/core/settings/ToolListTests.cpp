#include "SettingsTestSupport.h"
#include "settings/ToolList.h"
#include "support/FailureInjection.h"

namespace {

void LoadText(ToolList& list, const std::u16string& text) {
    IniFile file;
    ParseText(file, text);
    EXPECT_TRUE(list.Load(file));
}

std::vector<std::u16string> Commands(const ToolList& list) {
    std::vector<std::u16string> commands;
    for (const ToolRecord* tool = list.tools.head; tool; tool = tool->next) commands.push_back(Str(tool->command));
    return commands;
}

using Commanded = std::vector<std::u16string>;

TEST(ToolList, RecordHasTheFixedOrder) {
    const size_t offsets[] = {offsetof(ToolRecord, displayName), offsetof(ToolRecord, command),
                              offsetof(ToolRecord, startDir),    offsetof(ToolRecord, lastArgs),
                              offsetof(ToolRecord, promptArgs),  offsetof(ToolRecord, redirectOutput),
                              offsetof(ToolRecord, hotKey),      offsetof(ToolRecord, hotKeyFlags)};
    EXPECT_TRUE(std::is_sorted(std::begin(offsets), std::end(offsets)));
}

TEST(ToolList, LoadsEveryKey) {
    ToolList list;
    LoadText(list, u"[Tool]\nDisplayName=&Make\nCommand=make -k\nStartDir=%FILEDIR%\nPromptArgs=1\n"
                   u"LastArgs=all\nRedirectOutput=2\nHotKey=116\nHotKeyFlags=12\n");
    ASSERT_EQ(list.Count(), 1u);
    const ToolRecord& tool = *list.At(0);
    EXPECT_EQ(Str(tool.displayName), u"&Make");
    EXPECT_EQ(Str(tool.command), u"make -k");
    EXPECT_EQ(Str(tool.startDir), u"%FILEDIR%");
    EXPECT_EQ(Str(tool.lastArgs), u"all");
    EXPECT_EQ(tool.promptArgs, 1u);
    EXPECT_EQ(tool.redirectOutput, 2u);
    EXPECT_EQ(tool.hotKey, 116u);
    EXPECT_EQ(tool.hotKeyFlags, 12u);
}

TEST(ToolList, AbsentKeysAreEmptyOrZero) {
    ToolList list;
    LoadText(list, u"[Tool]\nCommand=x\n");
    ASSERT_EQ(list.Count(), 1u);
    const ToolRecord& tool = *list.At(0);
    EXPECT_TRUE(tool.displayName.IsEmpty());
    EXPECT_TRUE(tool.startDir.IsEmpty());
    EXPECT_TRUE(tool.lastArgs.IsEmpty());
    EXPECT_EQ(tool.promptArgs + tool.redirectOutput + tool.hotKey + tool.hotKeyFlags, 0u);
}

TEST(ToolList, TakesSectionsOfTheExactNameInFileOrder) {
    ToolList list;
    LoadText(list, u"[Tool]\nCommand=b\n[tool]\nCommand=x\n[Tools]\nCommand=x\n[General]\nCommand=x\n"
                   u"[Tool]\nCommand=a\n[Tool ]\nCommand=x\n");
    EXPECT_EQ(Commands(list), (Commanded{u"b", u"a"}));
}

TEST(ToolList, DiscardsToolsWithoutACommand) {
    ToolList list;
    LoadText(list, u"[Tool]\nDisplayName=none\n[Tool]\nCommand=\n[Tool]\nCommand= \n");
    EXPECT_EQ(Commands(list), (Commanded{u" "}));
}

TEST(ToolList, LoadReplacesTheList) {
    ToolList list;
    LoadText(list, u"[Tool]\nCommand=a\n[Tool]\nCommand=b\n");
    LoadText(list, u"[Tool]\nCommand=c\n");
    EXPECT_EQ(Commands(list), (Commanded{u"c"}));
    LoadText(list, u"");
    EXPECT_EQ(list.Count(), 0u);
}

TEST(ToolList, AtGivesNothingBeyondTheEnd) {
    ToolList list;
    EXPECT_EQ(list.At(0), nullptr);
    LoadText(list, u"[Tool]\nCommand=a\n[Tool]\nCommand=b\n");
    EXPECT_EQ(Str(list.At(1)->command), u"b");
    EXPECT_EQ(list.At(2), nullptr);
    EXPECT_EQ(list.At(UINT32_MAX), nullptr);
}

TEST(ToolList, StoreWritesAFullToolInTheWrittenOrder) {
    ToolList list;
    LoadText(list, u"[Tool]\nHotKeyFlags=12\nHotKey=116\nRedirectOutput=1\nLastArgs=all\nPromptArgs=1\n"
                   u"StartDir=d\nCommand=c\nDisplayName=n\n");
    IniFile file;
    ASSERT_TRUE(list.Store(file));
    const Model expected = {{u"Tool",
                             {{u"DisplayName", u"n"},
                              {u"Command", u"c"},
                              {u"StartDir", u"d"},
                              {u"LastArgs", u"all"},
                              {u"PromptArgs", u"1"},
                              {u"RedirectOutput", u"1"},
                              {u"HotKey", u"116"},
                              {u"HotKeyFlags", u"12"}}}};
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(ToolList, StoreLeavesOutWhatIsEmptyOrZeroButTheNameAndTheCommand) {
    ToolList list;
    list.tools.Append(new ToolRecord);
    IniFile file;
    ASSERT_TRUE(list.Store(file));
    const Model expected = {{u"Tool", {{u"DisplayName", u""}, {u"Command", u""}}}};
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(ToolList, StoreReplacesEveryToolSectionByNewOnesAtTheEnd) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[Tool]\nCommand=a\nMine=1\n[General]\nk=v\n[Tool]\nCommand=b\n[tool]\n"));
    ToolList list;
    ASSERT_TRUE(list.Load(file));
    ASSERT_TRUE(list.Store(file));
    const Model expected = {{u"General", {{u"k", u"v"}}},
                            {u"tool", {}},
                            {u"Tool", {{u"DisplayName", u""}, {u"Command", u"a"}}},
                            {u"Tool", {{u"DisplayName", u""}, {u"Command", u"b"}}}};
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(ToolList, ToolWithoutCommandDisappearsOnTheNextSave) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[Tool]\nDisplayName=gone\n[Tool]\nCommand=stays\n"));
    ToolList list;
    ASSERT_TRUE(list.Load(file));
    ASSERT_TRUE(list.Store(file));
    const Model expected = {{u"Tool", {{u"DisplayName", u""}, {u"Command", u"stays"}}}};
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(ToolList, AcceleratorsCountPositionsOverAllTools) {
    ToolList list;
    LoadText(list, u"[Tool]\nCommand=a\n[Tool]\nCommand=b\nHotKey=65\nHotKeyFlags=8\n[Tool]\nCommand=\nHotKey=66\n"
                   u"[Tool]\nCommand=c\nHotKeyFlags=8\n[Tool]\nCommand=d\nHotKey=112\n");
    Array<ToolAccelerator> table;
    ASSERT_TRUE(list.Accelerators(table));
    ASSERT_EQ(table.Count(), 2u);
    EXPECT_EQ(table[0].flags, HotKeyFlag::Virtual + HotKeyFlag::Ctrl);
    EXPECT_EQ(table[0].key, 65);
    EXPECT_EQ(table[0].command, 46001);
    EXPECT_EQ(table[1].flags, HotKeyFlag::Virtual);
    EXPECT_EQ(table[1].key, 112);
    EXPECT_EQ(table[1].command, 46003);
}

TEST(ToolList, AcceleratorTakesTheLowByteOfTheFlags) {
    ToolList list;
    LoadText(list, u"[Tool]\nCommand=a\nHotKey=65\nHotKeyFlags=4124\n"); // 0x101C
    Array<ToolAccelerator> table;
    ASSERT_TRUE(list.Accelerators(table));
    ASSERT_EQ(table.Count(), 1u);
    EXPECT_EQ(table[0].flags, 0x1D);
}

TEST(ToolList, AcceleratorsReplaceWhatWasThere) {
    ToolList list;
    Array<ToolAccelerator> table;
    ASSERT_TRUE(table.Append({1, 2, 3}));
    ASSERT_TRUE(list.Accelerators(table));
    EXPECT_TRUE(table.IsEmpty());
}

TEST(ToolList, NoAcceleratorHasANumberOfTheSystems) {
    ToolList list;
    for (uint32_t i = 0; i < 20000; ++i) {
        auto* tool = new ToolRecord;
        tool->hotKey = 65;
        list.tools.Append(tool);
    }
    Array<ToolAccelerator> table;
    ASSERT_TRUE(list.Accelerators(table));
    EXPECT_EQ(table.Count(), 0xF000u - 46000u);
    EXPECT_EQ(table.Last().command, 0xEFFF);
}

TEST(ToolList, CopyHoldsEveryFieldUnlinked) {
    ToolList list;
    LoadText(list, u"[Tool]\nDisplayName=n\nCommand=c\nStartDir=d\nPromptArgs=1\nLastArgs=l\nRedirectOutput=1\n"
                   u"HotKey=65\nHotKeyFlags=8\n[Tool]\nCommand=b\n");
    ToolRecord* copy = CopyTool(*list.At(0));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->next, nullptr);
    ToolList copies;
    copies.tools.Append(copy);
    copies.tools.Append(CopyTool(*list.At(1)));
    IniFile original;
    IniFile copied;
    ASSERT_TRUE(list.Store(original));
    ASSERT_TRUE(copies.Store(copied));
    EXPECT_EQ(ModelOf(copied), ModelOf(original));
}

TEST(ToolList, EveryFailingAllocationOfALoadLeavesTheList) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[Tool]\nDisplayName=n\nCommand=c\nStartDir=d\nLastArgs=l\n[Tool]\nCommand=d\n"));
    const uint64_t failures = FailEachAllocation([&] {
        ToolList list;
        {
            const FailurePause pause;
            LoadText(list, u"[Tool]\nCommand=before\n");
        }
        const bool done = list.Load(file);
        EXPECT_EQ(Commands(list), done ? (Commanded{u"c", u"d"}) : (Commanded{u"before"}));
        EXPECT_EQ(Str(list.At(0)->startDir), done ? u"d" : u"");
        EXPECT_EQ(Str(list.At(0)->lastArgs), done ? u"l" : u"");
        return done;
    });
    EXPECT_GE(failures, 7u);
}

TEST(ToolList, EveryFailingAllocationOfAStoreLeavesTheFile) {
    ToolList list;
    LoadText(list, u"[Tool]\nDisplayName=n\nCommand=c\nHotKey=3\n[Tool]\nCommand=d\n");
    const uint64_t failures = FailEachAllocation([&] {
        IniFile file;
        {
            const FailurePause pause;
            ParseText(file, u"[Tool]\nCommand=before\n[General]\n");
        }
        const Model before = ModelOf(file);
        const bool done = list.Store(file);
        EXPECT_EQ(ModelOf(file) == before, !done);
        return done;
    });
    EXPECT_GE(failures, 10u);
}

TEST(ToolList, EveryFailingAllocationOfACopyGivesNothing) {
    ToolList list;
    LoadText(list, u"[Tool]\nDisplayName=n\nCommand=c\nStartDir=d\nLastArgs=l\n");
    const uint64_t failures = FailEachAllocation([&] {
        ToolRecord* copy = CopyTool(*list.At(0));
        const bool done = copy != nullptr;
        delete copy;
        return done;
    });
    EXPECT_EQ(failures, 5u);
}

TEST(ToolList, AcceleratorsWithoutMemoryLeaveTheTable) {
    ToolList list;
    LoadText(list, u"[Tool]\nCommand=a\nHotKey=65\n[Tool]\nCommand=b\nHotKey=66\n");
    const uint64_t failures = FailEachAllocation([&] {
        Array<ToolAccelerator> table;
        {
            const FailurePause pause;
            EXPECT_TRUE(table.Append({1, 2, 3}));
        }
        const bool done = list.Accelerators(table);
        EXPECT_EQ(table.Count(), done ? 2u : 1u);
        return done;
    });
    EXPECT_EQ(failures, 1u);
}

} // namespace
