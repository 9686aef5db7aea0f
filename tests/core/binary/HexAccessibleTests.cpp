// What a hex view says of itself to screen readers.
#include "HexViewTest.h"
#include "base/WString.h"
#include "binary/HexAccessible.h"
#include "support/FailureInjection.h"

namespace {

class HexAccessibleTest : public HexViewTest {
protected:
    HexAccessible Accessible() const { return HexAccessible(view()); }
    std::string Value() const {
        WString value;
        EXPECT_TRUE(Accessible().AppendValue(value));
        return {value.Text(), value.Text() + value.Length()};
    }
};

TEST_F(HexAccessibleTest, TheValueIsTheRowOfTheCaret) {
    Show(std::string("0123456789abcdefHi\n"));
    EXPECT_EQ(Value(), "0000000000  30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66  0123456789abcdef");
    Press(ViewKey::Down);
    EXPECT_EQ(Value(), "0000000010  48 69 0A  Hi.");
    input().OnChar(u'4');
    input().OnChar(u'1');
    EXPECT_EQ(Value(), "0000000010  41 69 0A  Ai.");
    Ctrl(ViewKey::End);
    EXPECT_EQ(Value(), "0000000010  41 69 0A  Ai.");
}

TEST_F(HexAccessibleTest, AfterTheLastFullRowThereIsOnlyAnOffset) {
    Show(std::string(16, 'x'));
    view().GoTo(16);
    ASSERT_EQ(view().Caret(), 16u);
    EXPECT_EQ(Value(), "0000000010");
    Show("");
    EXPECT_EQ(Value(), "0000000000");
}

TEST_F(HexAccessibleTest, StateTellsNibblesRowsAndEdits) {
    Show(std::string(40, 'x'));
    const AccessibleState start = Accessible().State();
    EXPECT_EQ(start, (AccessibleState{0, 0, 0, start.edits, start.name}));
    view().GoTo(17);
    EXPECT_EQ(Accessible().State(), (AccessibleState{34, 34, 1, start.edits, start.name}));
    input().OnChar(u'A');
    EXPECT_TRUE(view().IsOnLowNibble());
    EXPECT_EQ(Accessible().State().caret, 35u);
    EXPECT_GT(Accessible().State().edits, start.edits);
}

TEST_F(HexAccessibleTest, TheNameIsTheFiles) {
    Show("abc");
    EXPECT_EQ(std::u16string(Accessible().Name()), file->path);
    EXPECT_FALSE(Accessible().IsReadOnly());
    EXPECT_FALSE(Accessible().HasText());
    view().SetDocument(nullptr);
    EXPECT_EQ(std::u16string(Accessible().Name()), u"");
    EXPECT_TRUE(Accessible().IsReadOnly());
    EXPECT_EQ(Value(), "");
    delete shown; // no document owns it any more
}

TEST_F(HexAccessibleTest, WithoutMemoryNothingIsAppended) {
    Show("abc");
    FailEachAllocation([&] {
        WString value;
        const bool done = Accessible().AppendValue(value);
        EXPECT_EQ(value.IsEmpty(), !done);
        return done;
    });
}

} // namespace
