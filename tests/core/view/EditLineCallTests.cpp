#include "document/EditPipeline.h"
#include "support/ViewTest.h"

// Every call of EditPipeline::LoadEditLine from another file comes here, by an option of the linker: it is the same
// function to the caller, with the object as its first argument.
bool LoadEditLine(EditPipeline* pipeline, uint32_t line) asm("__wrap__ZN12EditPipeline12LoadEditLineEj");
bool ReallyLoadEditLine(EditPipeline* pipeline, uint32_t line) asm("__real__ZN12EditPipeline12LoadEditLineEj");

namespace {

int calls = 0;

struct EditLineCallTest : ViewTest {
    template <class Act> int CallsOf(Act act) {
        calls = 0;
        act();
        return calls;
    }
};

} // namespace

bool LoadEditLine(EditPipeline* pipeline, uint32_t line) {
    ++calls;
    return ReallyLoadEditLine(pipeline, line);
}

TEST_F(EditLineCallTest, AKeyOpensItsLineOnce) {
    Show(u"one\ntw|o\nthree");
    EXPECT_EQ(CallsOf([this] { Type(u"x"); }), 1);
    EXPECT_EQ(CallsOf([this] { Type(u"y"); }), 1) << "goes on with the first";
    EXPECT_EQ(CallsOf([this] { Press(ViewKey::Delete); }), 1);
    EXPECT_EQ(CallsOf([this] { Press(ViewKey::Delete); }), 1) << "the line feed";
    EXPECT_EQ(CallsOf([this] { Type(u"\r"); }), 1);
    EXPECT_EQ(CallsOf([this] { Press(ViewKey::Left); }), 1);
    EXPECT_EQ(Marked(), "one\ntwxy|\nthree");
}
