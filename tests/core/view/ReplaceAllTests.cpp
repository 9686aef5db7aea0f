#include "ReplaceModel.h"
#include "support/FailureInjection.h"
#include "support/Random.h"
#include "support/ViewTest.h"
#include "view/EditorFind.h"

namespace {

struct ReplaceAllTest : ViewTest {
    std::string After(const std::u16string& text, const std::u16string& pattern, const std::u16string& replacement,
                      bool inSelection = false) {
        Show(text);
        static_cast<void>(findState.searchHistory.Add(pattern.data(), static_cast<uint32_t>(pattern.size())));
        EditorFind::ReplaceAll(view(), replacement.data(), static_cast<uint32_t>(replacement.size()), inSelection);
        return Marked();
    }
    std::string Message() const { return Status(StatusField::Message); }
};

// All that a user can see of a document with two views.
struct Seen {
    std::u16string text;
    std::vector<uint32_t> marks;
    std::vector<uint32_t> positions; // line, column, anchor, caret, top line of each view
    bool operator==(const Seen&) const = default;
};

void PrintTo(const Seen& seen, std::ostream* out) {
    *out << '"' << Plain(seen.text) << "\" marks";
    for (const uint32_t mark : seen.marks) *out << ' ' << mark;
    *out << " views";
    for (const uint32_t position : seen.positions) *out << ' ' << position;
}

// A document with two views, the first of them with the focus.
struct Stage {
    TextDocument document;
    TestView* views[2];

    Stage(const std::u16string& text, Random& random) : document(text) {
        const auto length = static_cast<uint32_t>(text.size());
        for (TestView*& view : views) view = TestView::Create(*document);
        for (TestView* view : views) {
            view->surface.SetSize(400, static_cast<int32_t>(2 + random.Below(4)) * 16);
            view->input.OnSize(false);
        }
        views[0]->input.OnAttached();
        views[0]->surface.TakeFocus();
        for (uint32_t marks = random.Below(4); marks; --marks)
            document->ToggleBookmark(random.Below(document->GetLineCount()));
        for (TestView* view : views) {
            view->editor.SelectRange({random.Below(length + 1), random.Below(length + 1)});
            view->editor.SetTopLine(random.Below(document->GetLineCount()));
        }
    }
    Seen Look() const {
        Seen seen{document.Text(), document.MarkedLines(), {}};
        for (const TestView* view : views) {
            const TextEditor& editor = view->editor;
            for (const uint32_t value : {editor.CaretLine(), editor.CaretColumn(), editor.SelectionAnchor(),
                                         editor.CaretOffset(), editor.TopLine()})
                seen.positions.push_back(value);
        }
        return seen;
    }
};

// Undoes and redoes the last step of both, twice.
::testing::AssertionResult AgreeThroughUndo(Stage& one, Stage& other) {
    for (int again = 0; again < 4; ++again) {
        const bool undo = again % 2 == 0;
        for (Stage* stage : {&one, &other}) EXPECT_TRUE(undo ? stage->document->Undo() : stage->document->Redo());
        const Seen seen = one.Look();
        const Seen otherSeen = other.Look();
        if (seen == otherSeen) continue;
        return ::testing::AssertionFailure() << (undo ? "undone: " : "redone: ") << ::testing::PrintToString(seen)
                                             << " and " << ::testing::PrintToString(otherSeen);
    }
    return ::testing::AssertionSuccess();
}

std::u16string RandomText(Random& random, uint32_t longest, const std::u16string& letters) {
    std::u16string text;
    for (uint32_t count = random.Below(longest + 1); count; --count) text += random.Pick(letters);
    return text;
}

} // namespace

TEST_F(ReplaceAllTest, EveryMatchIsReplacedAndCounted) {
    EXPECT_EQ(After(u"|one two one", u"one", u"three"), "three two three|");
    EXPECT_EQ(Message(), "2 occurences replaced");
    EXPECT_EQ(After(u"|one two one", u"one", u""), " two |");
    EXPECT_EQ(After(u"|aXbXc", u"X", u"Y"), "aYbY|c");
}

TEST_F(ReplaceAllTest, ALetterIsDoubledOncePerMatch) {
    EXPECT_EQ(After(u"|aaa", u"a", u"aa"), "aaaaaa|");
    EXPECT_EQ(Message(), "3 occurences replaced");
}

TEST_F(ReplaceAllTest, ReplacedTextIsNotSearchedAgain) {
    EXPECT_EQ(After(u"|abab", u"ab", u"xabx"), "xabxxabx|");
    EXPECT_EQ(After(u"|aab", u"ab", u""), "a|");
    EXPECT_EQ(Message(), "1 occurences replaced");
}

TEST_F(ReplaceAllTest, TheWholeFileIsSearchedFromItsStart) { EXPECT_EQ(After(u"ab ab|", u"ab", u"x"), "x x|"); }

TEST_F(ReplaceAllTest, ASelectionIsNeverLeftAndGrowsWithItsText) {
    EXPECT_EQ(After(u"ab ^ab ab| ab", u"ab", u"xyz", true), "ab ^xyz xyz| ab");
    EXPECT_EQ(After(u"ab |ab ab^ ab", u"ab", u"x", true), "ab ^x x| ab");
    EXPECT_EQ(After(u"a^b a|b", u"ab", u"x", true), "a^b a|b");
    EXPECT_EQ(Message(), "0 occurences replaced");
    EXPECT_EQ(After(u"^ab a|b", u"ab", u"x", true), "^x a|b");
}

TEST_F(ReplaceAllTest, NothingFoundReportsZero) {
    EXPECT_EQ(After(u"a|bc", u"zz", u"y"), "a|bc");
    EXPECT_EQ(Message(), "0 occurences replaced");
    EXPECT_EQ(document->UndoSteps(), 0u);
    EXPECT_FALSE(buffer().IsModified());
}

TEST_F(ReplaceAllTest, WithoutAnySearchTextNothingIsReplaced) {
    Show(u"a|bc");
    EditorFind::ReplaceAll(view(), u"x", 1, false);
    EXPECT_EQ(Message(), "0 occurences replaced");
}

TEST_F(ReplaceAllTest, WhatIsNowhereReplacesNothing) {
    for (const std::u16string& pattern : {std::u16string(), std::u16string(u"abcd"), std::u16string(u"a\0b", 3)}) {
        EXPECT_EQ(After(u"a|bc", pattern, u"x"), "a|bc") << pattern.size();
        EXPECT_EQ(Message(), "0 occurences replaced");
        EXPECT_EQ(After(u"^abc|", pattern, u"x", true), "^abc|") << pattern.size();
        EXPECT_EQ(document->UndoSteps(), 0u);
    }
    EXPECT_EQ(After(u"|", u"a", u"x"), "|");
}

TEST_F(ReplaceAllTest, CaseAndWholeWordsAreHeeded) {
    findState.matchCase = true;
    EXPECT_EQ(After(u"|ab AB", u"ab", u"x"), "x| AB");
    findState.matchCase = false;
    findState.wholeWord = true;
    EXPECT_EQ(After(u"|ab abc AB", u"ab", u"x"), "x abc x|");
}

TEST_F(ReplaceAllTest, AWholeWordIsJudgedByTheTextReplacedBeforeIt) {
    findState.wholeWord = true;
    // The first "-" becomes a letter; the second then follows a word character.
    EXPECT_EQ(After(u"|--", u"-", u"x"), "x|-");
    EXPECT_EQ(After(u"|--", u"-", u"+"), "++|");
    EXPECT_EQ(After(u"|a --", u"-", u""), "a |");
    EXPECT_EQ(After(u"|a--", u"-", u""), "a-|");
}

TEST_F(ReplaceAllTest, ItIsOneStepBothWays) {
    After(u"o|ne two one", u"one", u"three");
    EXPECT_EQ(document->UndoSteps(), 1u);
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Marked(), "o|ne two one");
    EXPECT_TRUE(buffer().Redo());
    EXPECT_EQ(Marked(), "three two three|");
    EXPECT_TRUE(buffer().Undo());
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Marked(), "o|ne two one");
}

TEST_F(ReplaceAllTest, UndoBringsBackTheLettersThatStoodThere) {
    After(u"|Ab aB ab", u"ab", u"x");
    EXPECT_EQ(Plain(Text()), "x x x");
    EXPECT_TRUE(buffer().Undo());
    EXPECT_EQ(Plain(Text()), "Ab aB ab");
}

TEST_F(ReplaceAllTest, AReadOnlyDocumentStaysAsItIs) {
    Show(u"aaa");
    EXPECT_TRUE(buffer().MarkAsOutput());
    EXPECT_TRUE(findState.searchHistory.Add(u"a", 1));
    EditorFind::ReplaceAll(view(), u"b", 1, false);
    EXPECT_EQ(Plain(Text()), "aaa");
    EXPECT_EQ(Message(), "0 occurences replaced");
}

TEST_F(ReplaceAllTest, ATextThatWouldBecomeTooLongIsRefused) {
    Show(u"|" + std::u16string(5000, u'a'));
    EXPECT_TRUE(findState.searchHistory.Add(u"a", 1));
    const std::u16string replacement(1000000, u'b');
    EXPECT_FALSE(EditorFind::ReplaceAll(view(), replacement.data(), 1000000, false));
    EXPECT_EQ(Text(), std::u16string(5000, u'a'));
    EXPECT_EQ(document->UndoSteps(), 0u);
    ASSERT_EQ(host().messages.size(), 1u);
    EXPECT_EQ(Plain(host().messages[0]), "The text would become too long");
    EXPECT_EQ(Message(), "0 occurences replaced");
}

TEST_F(ReplaceAllTest, EscapeChangesNothing) {
    Fill(std::u16string((1u << 24) + 100, u'x') + u"ab");
    EXPECT_TRUE(findState.searchHistory.Add(u"x", 1));
    surface().tickStep = 600;
    surface().escapePressed = true;
    EXPECT_FALSE(EditorFind::ReplaceAll(view(), u"y", 1, false));
    EXPECT_EQ(buffer().Content()[0], u'x');
    EXPECT_EQ(document->UndoSteps(), 0u);
    EXPECT_TRUE(host().messages.empty());
    EXPECT_FALSE(surface().waiting);
}

TEST_F(ReplaceAllTest, WithoutMemoryNothingIsHalfReplaced) {
    const uint64_t failures = FailEachAllocation([&] {
        {
            FailurePause pause;
            Show(u"a|b ab ab");
            view().ToggleBookmark(0);
            static_cast<void>(findState.searchHistory.Add(u"ab", 2));
        }
        const bool done = EditorFind::ReplaceAll(view(), u"longer", 6, false);
        FailurePause pause;
        EXPECT_EQ(Marked(), done ? "longer longer longer|" : "a|b ab ab");
        EXPECT_EQ(document->UndoSteps(), done ? 1u : 0u);
        return done;
    });
    EXPECT_GT(failures, 3u);
}

TEST_F(ReplaceAllTest, AnUndoWithoutMemoryLeavesTheReplacedText) {
    const uint64_t failures = FailEachAllocation([&] {
        {
            FailurePause pause;
            After(u"|longer longer", u"longer", u"x");
            EXPECT_TRUE(buffer().InsertText(0, u"-", 1));
            EXPECT_TRUE(buffer().Undo());
        }
        const bool done = buffer().Undo();
        FailurePause pause;
        EXPECT_EQ(Plain(Text()), done ? "longer longer" : "x x");
        return done;
    });
    EXPECT_GT(failures, 0u);
}

// In one pass and one by one the user sees the same: after the change, after each undo and redo.
TEST_F(ReplaceAllTest, OnePassGivesWhatOneByOneGives) {
    Random random(7);
    const std::u16string letters = u"aAb-\n ";
    for (int round = 0; round < 3000; ++round) {
        const std::u16string text = RandomText(random, 40, letters);
        std::u16string pattern = RandomText(random, 2, letters);
        if (pattern.empty()) pattern = u"a";
        const std::u16string replacement = RandomText(random, 3, letters + u"c");
        const OneByOne::Rules rules{random.OneIn(2), random.OneIn(3)};
        const bool inSelection = random.OneIn(2);
        Random first = random;
        Random second = random;
        Stage single(text, first);
        Stage bulk(text, second);
        random.Below(1000);
        SCOPED_TRACE(Plain(text) + " / " + Plain(pattern) + " -> " + Plain(replacement) +
                     (rules.wholeWord ? " word" : "") + (inSelection ? " selection" : ""));
        ASSERT_EQ(single.Look(), bulk.Look());

        static_cast<void>(findState.searchHistory.Add(pattern.data(), static_cast<uint32_t>(pattern.size())));
        findState.matchCase = rules.matchCase;
        findState.wholeWord = rules.wholeWord;
        const uint32_t count = OneByOne::ReplaceAll(single.views[0]->editor, pattern, replacement, rules, inSelection);
        EditorFind::ReplaceAll(bulk.views[0]->editor, replacement.data(), static_cast<uint32_t>(replacement.size()),
                               inSelection);
        ASSERT_EQ(Plain(bulk.views[0]->surface.ownHost.status[StatusField::Message]),
                  std::to_string(count) + " occurences replaced");
        ASSERT_EQ(single.Look(), bulk.Look());
        if (count == 0) continue;
        ASSERT_TRUE(AgreeThroughUndo(single, bulk));
    }
}

TEST_F(ReplaceAllTest, IndentingInOnePassGivesWhatOneByOneGives) {
    Random random(8);
    const std::u16string letters = u"ab \t\n";
    for (int round = 0; round < 3000; ++round) {
        const std::u16string text = RandomText(random, 40, letters);
        const bool unindent = random.OneIn(2);
        settings.ReplaceTabs = random.Below(2);
        settings.SpacesPerTab = 1 + random.Below(4);
        Random first = random;
        Random second = random;
        Stage single(text, first);
        Stage bulk(text, second);
        random.Below(1000);
        TextEditor& editor = bulk.views[0]->editor;
        const TextCaret& caret = editor.Caret();
        if (editor.Text().LineOf(caret.SelectionStart()) == editor.Text().LineOf(caret.SelectionEnd())) continue;
        SCOPED_TRACE(Plain(text) + (unindent ? " unindent" : " indent"));

        OneByOne::Indent(single.views[0]->editor, unindent, settings.SpacesPerTab, settings.ReplaceTabs != 0);
        bulk.views[0]->surface.shift = unindent;
        bulk.views[0]->input.OnChar(u'\t');
        ASSERT_EQ(single.Look(), bulk.Look());
        if (bulk.document.UndoSteps() == 0) continue;
        ASSERT_TRUE(AgreeThroughUndo(single, bulk));
    }
}

// With line breaks of every kind; a typed character is pending in half of the rounds.
TEST_F(ReplaceAllTest, PastingGivesWhatTheSingleChangesGive) {
    Random random(9);
    for (int round = 0; round < 3000; ++round) {
        const std::u16string text = RandomText(random, 40, u"ab \n");
        const std::u16string pasted = RandomText(random, 12, u"xy\n");
        const bool wholeLine = random.OneIn(2);
        const bool shift = random.OneIn(2);
        const bool pending = random.OneIn(2);
        const std::u16string lineBreak = random.OneIn(3) ? u"\r" : random.OneIn(2) ? u"\r\n" : u"\n";
        settings.PasteKeepSelection = random.Below(2);
        Random first = random;
        Random second = random;
        Stage single(text, first);
        Stage real(text, second);
        random.Below(1000);
        SCOPED_TRACE(Plain(text) + " <- " + Plain(pasted) + (wholeLine ? " line" : "") + (shift ? " shift" : ""));
        for (const Stage* stage : {&single, &real})
            if (pending && !stage->views[0]->editor.Caret().HasSelection()) stage->views[0]->input.OnChar(u'z');

        OneByOne::Paste(single.views[0]->editor, pasted, wholeLine, (settings.PasteKeepSelection != 0) != shift);
        FakeTextSurface& surface = real.views[0]->surface;
        surface.clipboard.clear();
        for (const char16_t c : pasted) surface.clipboard += c == u'\n' ? lineBreak : std::u16string(1, c);
        surface.clipboardHasText = true;
        surface.clipboardWholeLine = wholeLine;
        surface.shift = shift;
        real.views[0]->input.ExecuteCommand(ViewCommand::Paste);
        ASSERT_EQ(single.Look(), real.Look());
        ASSERT_EQ(single.document.UndoSteps(), real.document.UndoSteps());
        if (real.document.UndoSteps() == 0) continue;
        ASSERT_TRUE(AgreeThroughUndo(single, real));
    }
}
