// Two and three views on one document, each used in turn. Whatever changes the text, every view must go on
// meaning a place of it.

#include "EditorModelTest.h"
#include "support/ScratchFolder.h"
#include "support/ViewsAgree.h"
#include "view/EditorFind.h"

#include <set>
#include <vector>

namespace {

// The texts that a document has gone through. Undo may go back over several of them at once, as a run of typing is
// one step for the user, but never to a text that was not there.
struct TextHistory {
    explicit TextHistory(const std::u16string& text) : first(text), last(text), all{text} {}
    void Add(const std::u16string& text) { all.insert(text); }

    std::u16string first;
    std::u16string last; // where redoing everything leads
    std::set<std::u16string> all;
};

struct SeveralViewsTest : EditorModelTest {
    void Begin(const std::u16string& text, size_t count) {
        Fill(text, u"cpp");
        surface().clipboardHasText = true;
        views = {shown};
        while (views.size() < count) Open();
    }
    void Open() {
        TestView* made = TestView::Create(buffer());
        made->surface.SetSize(surface().width, surface().height);
        made->input.OnSize(true);
        made->input.OnAttached();
        views.push_back(made);
    }
    // Every view has the one clipboard of the system.
    void Focus(TestView* view) {
        FakeSurface& next = view->surface;
        FakeSurface& old = surface();
        if (&next == &old) return;
        next.clipboard = old.clipboard;
        next.clipboardHasText = old.clipboardHasText;
        next.clipboardWholeLine = old.clipboardWholeLine;
        old.focus = false;
        shown = view;
        next.TakeFocus();
    }
    void Close(size_t index) {
        TestView* closed = views[index];
        if (closed == shown) Focus(views[index ? 0 : 1]);
        views.erase(views.begin() + static_cast<std::ptrdiff_t>(index));
        closed->editor.Destroy();
    }

    void Load(EditorModel& model) const {
        model.caret = view().CaretOffset();
        model.anchor = view().SelectionAnchor();
        model.preferred = view().Caret().PreferredColumn();
        model.overwrite = view().IsOverwriting();
    }
    ::testing::AssertionResult AllAgree(const EditorModel& model) const {
        const std::u16string text = Text();
        if (text != model.text)
            return ::testing::AssertionFailure()
                   << '"' << Plain(text) << "\" instead of \"" << Plain(model.text) << '"';
        for (size_t i = 0; i < views.size(); ++i) {
            const ::testing::AssertionResult agrees = ViewAgrees(views[i]->editor, text);
            if (!agrees) return ::testing::AssertionFailure() << "view " << i << ", " << agrees.message();
        }
        const std::vector<uint32_t> marks = document->MarkedLines();
        if (!marks.empty() && marks.back() >= buffer().GetLineCount())
            return ::testing::AssertionFailure() << "a bookmark past the end";
        return ::testing::AssertionSuccess();
    }

    // A key or character in the view with the focus; its name.
    std::string KeyStep(Random& random, EditorModel& model, TextHistory& history) {
        const EditorModel before = model;
        std::string name = Step(random, model);
        // Deleting the selection is a step of its own when something is typed over it.
        EditorModel deleted = before;
        deleted.DeleteSelection();
        history.Add(deleted.text);
        // Spaces typed for a tab are steps of their own where a bracket is matched after each.
        if (name.starts_with("tab")) {
            for (size_t at = deleted.caret; at < model.caret; ++at) {
                deleted.text.insert(at, 1, u' ');
                history.Add(deleted.text);
            }
        }
        history.Add(model.text);
        return name;
    }
    std::string Undo(EditorModel& model, TextHistory& history) {
        Ctrl(u'Z');
        model.text = Text();
        EXPECT_TRUE(history.all.contains(model.text)) << Plain(model.text);
        return "undo";
    }
    std::string Redo(EditorModel& model, TextHistory& history) {
        Ctrl(u'Y');
        model.text = Text();
        EXPECT_TRUE(history.all.contains(model.text)) << Plain(model.text);
        return "redo";
    }
    std::string IndentBlock(bool unindent, EditorModel& model, TextHistory& history) {
        const size_t end = model.LineStart(model.To());
        if (model.LineStart(model.From()) == end) return "";
        for (size_t at = model.LineStart(model.From()), stop = end; at < stop; at = model.LineEnd(at) + 1) {
            size_t blanks = 0;
            while (model.text[at + blanks] == u' ') ++blanks;
            const size_t removed = unindent ? std::min(blanks, EditorModel::Tab) : 0;
            const size_t added = unindent || model.text[at + blanks] == u'\n' ? 0 : EditorModel::Tab;
            model.text.replace(at, removed, std::u16string(added, u' '));
            stop += added - removed;
        }
        surface().shift = unindent;
        input().OnChar(u'\t');
        surface().shift = false;
        history.Add(model.text);
        return unindent ? "unindent" : "indent";
    }
    std::string ReplaceAll(Random& random, EditorModel& model, TextHistory& history) {
        const std::u16string pattern(1 + random.Below(2), random.Pick(typed));
        const std::u16string replacement(random.Below(4), random.OneIn(3) ? u'\n' : u'b');
        const bool inSelection = random.OneIn(2);
        size_t end = inSelection ? model.To() : model.text.size();
        for (size_t at = inSelection ? model.From() : 0;; at += replacement.size()) {
            at = model.text.find(pattern, at);
            if (at == model.text.npos || at + pattern.size() > end) break;
            model.text.replace(at, pattern.size(), replacement);
            end += replacement.size() - pattern.size();
        }
        static_cast<void>(findState.searchHistory.Add(pattern.data(), static_cast<uint32_t>(pattern.size())));
        EditorFind::ReplaceAll(view(), replacement.data(), static_cast<uint32_t>(replacement.size()), inSelection);
        history.Add(model.text);
        return "replace all " + Plain(pattern) + " by " + Plain(replacement) + (inSelection ? " in selection" : "");
    }
    std::string ReplaceSelection(EditorModel& model, TextHistory& history) {
        if (model.Selected()) model.Replace(model.From(), model.To(), u"a\nb");
        static_cast<void>(EditorFind::ReplaceSelection(view(), u"a\nb", 3));
        history.Add(model.text);
        return "replace selection";
    }
    std::string Reload(Random& random, EditorModel& model, TextHistory& history) {
        std::string text;
        for (uint32_t lines = random.Below(30); lines; --lines) text += std::string(random.Below(9), 'r') + "\n";
        EXPECT_TRUE(buffer().SetPath(folder.Write("file", text).c_str()));
        EXPECT_TRUE(buffer().Reload());
        model.text.assign(text.begin(), text.end());
        history = TextHistory(model.text);
        return "reload";
    }
    std::string Click(Random& random) {
        TestView* clicked = random.Pick(views);
        Focus(clicked);
        const ClientPoint point = {static_cast<int32_t>(random.Below(400)), static_cast<int32_t>(random.Below(200))};
        input().Drag().OnLeftButtonDown(point, random.OneIn(3));
        if (random.OneIn(2)) input().Drag().OnMouseMove({static_cast<int32_t>(random.Below(400)), 300});
        input().Drag().OnLeftButtonUp();
        if (random.OneIn(4)) input().OnDoubleClick();
        return "click";
    }
    std::string Scroll(Random& random) {
        TextInput& scrolled = random.Pick(views)->input;
        if (random.OneIn(2)) {
            scrolled.OnWheel({random.OneIn(2) ? 120 : -120, 3, false});
            return "wheel";
        }
        scrolled.OnScroll(random.OneIn(4) ? ScrollAxis::Horizontal : ScrollAxis::Vertical,
                          static_cast<ScrollRequest>(random.Below(7)), static_cast<int32_t>(random.Below(40)));
        return "scroll";
    }
    std::string OpenOrClose(Random& random) {
        if (views.size() == 3 || (views.size() == 2 && random.OneIn(2))) {
            const size_t closed = random.Below(views.size());
            Close(closed);
            return "close view " + std::to_string(closed);
        }
        Open();
        return "open a view";
    }

    // One random action; its name.
    std::string Act(Random& random, EditorModel& model, TextHistory& history) {
        Load(model);
        switch (random.Below(32)) {
        case 0:
        case 1:
        case 2:
            Focus(random.Pick(views));
            return "focus";
        case 3:
        case 4:
            return Undo(model, history);
        case 5:
            return Redo(model, history);
        case 6:
            return IndentBlock(random.OneIn(2), model, history);
        case 7:
            return ReplaceAll(random, model, history);
        case 8:
            return ReplaceSelection(model, history);
        case 9:
            Press(ViewKey::F2, random.OneIn(2), random.OneIn(3));
            return "bookmark";
        case 10:
            Press(ViewKey::F3, random.OneIn(2), random.OneIn(2));
            return "find";
        case 11:
            Ctrl(ViewKey::CloseBracket, random.OneIn(2));
            return "bracket";
        case 12:
            return Click(random);
        case 13:
            return Scroll(random);
        case 14:
            Ctrl(random.OneIn(2) ? ViewKey::Up : ViewKey::Down);
            return "scroll with the caret";
        case 15:
            view().GoToLine(random.Below(40), random.OneIn(2));
            return "go to line";
        case 16:
            if (random.OneIn(3)) Ctrl(u'A');
            return "select all";
        case 17:
            return random.OneIn(4) ? OpenOrClose(random) : "";
        case 18:
            return random.OneIn(12) ? Reload(random, model, history) : "";
        default:
            // In runs, so that typing is coalesced.
            std::string names;
            for (uint32_t runs = 1 + random.Below(4); runs; --runs) {
                Load(model);
                names += KeyStep(random, model, history) + "; ";
                EXPECT_EQ(view().CaretOffset(), model.caret);
                EXPECT_EQ(view().SelectionAnchor(), model.anchor);
            }
            return names;
        }
    }
    // What a command prints comes at the end. Carets that are there go along, all others stay where they are.
    std::string AppendOutput(Random& random, EditorModel& model) {
        const std::u16string pieces[] = {u"out", u"x", u"\n", u"\r\n"};
        std::u16string added;
        std::u16string expected;
        for (uint32_t count = random.Below(12); count; --count) {
            const std::u16string& piece = random.Pick(pieces);
            added += piece;
            expected += piece == u"\r\n" ? u"\n" : piece;
        }
        const auto oldEnd = static_cast<uint32_t>(model.text.size());
        model.text += expected;
        const auto newEnd = static_cast<uint32_t>(model.text.size());
        std::vector<TextSelection> wanted;
        for (const TestView* each : views) {
            const TextSelection selection = each->editor.Selection();
            wanted.push_back(selection.caret == oldEnd ? TextSelection{newEnd, newEnd} : selection);
        }
        EXPECT_TRUE(buffer().AppendOutputText(added.data()));
        for (size_t i = 0; i < views.size(); ++i) EXPECT_EQ(views[i]->editor.Selection(), wanted[i]) << "view " << i;
        return "output " + Plain(expected);
    }
    // Nobody can type into the document any more.
    std::string ActOnOutput(Random& random, EditorModel& model) {
        switch (random.Below(9)) {
        case 0:
            Focus(random.Pick(views));
            return "focus";
        case 1:
            return Click(random);
        case 2:
            return Scroll(random);
        case 3:
            Ctrl(random.OneIn(2) ? ViewKey::Home : ViewKey::End, random.OneIn(3));
            return "to an end";
        case 4:
            view().GoToLine(random.Below(40), random.OneIn(2));
            return "go to line";
        case 5:
            return OpenOrClose(random);
        default:
            return AppendOutput(random, model);
        }
    }
    void PlayOutput(Random& random, EditorModel& model, std::string& done) {
        ASSERT_TRUE(buffer().MarkAsOutput());
        for (int step = 0; step < 30; ++step) {
            done += std::to_string(std::find(views.begin(), views.end(), shown) - views.begin()) + ": " +
                    ActOnOutput(random, model) + "; ";
            ASSERT_TRUE(AllAgree(model)) << done;
            ASSERT_FALSE(HasFailure()) << done;
        }
    }
    void PlayRound(uint32_t seed) {
        Random random(seed);
        EditorModel model;
        for (uint32_t i = random.Below(60); i; --i) model.text += random.Pick(typed);
        for (uint32_t i = random.Below(20); i; --i) model.text.insert(random.Below(model.text.size() + 1), u"\n  ");
        Begin(model.text, 2 + random.Below(2));
        TextHistory history(model.text);
        std::string done;
        for (int step = 0; step < 200 && model.text.size() < 3000; ++step) {
            done += std::to_string(std::find(views.begin(), views.end(), shown) - views.begin()) + ": " +
                    Act(random, model, history) + "; ";
            ASSERT_TRUE(AllAgree(model)) << "seed " << seed << ": " << done;
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ": " << done;
            if (!buffer().CanDo(DocumentCommand::Redo)) history.last = model.text;
        }
        while (buffer().CanDo(DocumentCommand::Undo)) {
            Undo(model, history);
            ASSERT_TRUE(AllAgree(model)) << "seed " << seed << ": " << done;
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ": " << done;
        }
        ASSERT_EQ(Plain(Text()), Plain(history.first)) << "seed " << seed << ": " << done;
        while (buffer().CanDo(DocumentCommand::Redo)) {
            Redo(model, history);
            ASSERT_TRUE(AllAgree(model)) << "seed " << seed << ": " << done;
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ": " << done;
        }
        ASSERT_EQ(Plain(Text()), Plain(history.last)) << "seed " << seed << ": " << done;
        PlayOutput(random, model, done);
    }

    ScratchFolder folder;
    std::vector<TestView*> views;
};

} // namespace

TEST_F(SeveralViewsTest, AgreeAfterEveryStep) {
    for (uint32_t seed = 1; seed <= 3000 && !HasFatalFailure(); ++seed) PlayRound(seed);
}
