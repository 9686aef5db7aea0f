#include "EditorModelTest.h"

TEST_F(EditorModelTest, RandomKeysDoWhatTheModelDoes) {
    Random random(42);
    for (int round = 0; round < 40; ++round) {
        EditorModel model;
        for (uint32_t i = random.Below(60); i; --i) model.text += random.Pick(typed);
        for (uint32_t i = random.Below(8); i; --i) model.text.insert(random.Below(model.text.size() + 1), u"\n  ");
        const std::u16string initial = model.text;
        Fill(initial, u"cpp");
        surface().clipboardHasText = true;
        std::string done;
        for (int step = 0; step < 250; ++step) {
            if (model.text.size() > 3000) break;
            done += Step(random, model) + "; ";
            ASSERT_EQ(Plain(Text()), Plain(model.text)) << round << ": " << done;
            ASSERT_EQ(view().CaretOffset(), model.caret) << round << ": " << done;
            ASSERT_EQ(view().SelectionAnchor(), model.anchor) << round << ": " << done;
            ASSERT_EQ(view().CaretLine(), model.Line(model.caret)) << done;
            ASSERT_EQ(view().CaretColumn(), model.Column()) << done;
            // The caret is always in view.
            ASSERT_GE(view().CaretLine(), view().TopLine()) << done;
            ASSERT_LT(view().CaretLine(), view().TopLine() + 10) << done;
        }
        while (buffer().CanDo(DocumentCommand::Undo)) Ctrl(u'Z');
        ASSERT_EQ(Plain(Text()), Plain(initial)) << done;
        while (buffer().CanDo(DocumentCommand::Redo)) Ctrl(u'Y');
        ASSERT_EQ(Plain(Text()), Plain(model.text)) << done;
    }
}
