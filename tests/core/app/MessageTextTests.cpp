#include "app/MessageText.h"
#include "core/app/FakeFrame.h"
#include "support/FailureInjection.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

std::u16string Fitted(const std::u16string& message) {
    WString out;
    EXPECT_TRUE(BuildMessageText(message.c_str(), out));
    return Str(out);
}

std::u16string Words(size_t length) { return std::u16string(length, u'n'); }

TEST(MessageText, OrdinaryMessagesStayAsTheyAre) {
    for (const char16_t* message : {u"", u"Save changes to C:\\a b.txt?",
                                    u"File C:\\a has been modified by another program.\nWould you like to reopen it?"})
        EXPECT_EQ(Fitted(message), message);
    EXPECT_EQ(Fitted(Words(100) + u" " + Words(100) + u"\n" + Words(100)),
              Words(100) + u" " + Words(100) + u"\n" + Words(100));
}

TEST(MessageText, WordsLongerThanALineAreBroken) {
    EXPECT_EQ(Fitted(u"to " + Words(101) + u"?"), u"to " + Words(100) + u"\nn?");
    EXPECT_EQ(Fitted(Words(250)), Words(100) + u"\n" + Words(100) + u"\n" + Words(50));
}

TEST(MessageText, PairsOfSurrogatesStayTogether) {
    EXPECT_EQ(Fitted(Words(99) + u"\U0001F600" + Words(2)), Words(99) + u"\U0001F600\n" + Words(2));
}

TEST(MessageText, NothingIsLostBelowThirtyLines) {
    std::u16string fitted = Fitted(u"File " + Words(2900) + u" end.");
    fitted.erase(std::remove(fitted.begin(), fitted.end(), u'\n'), fitted.end());
    EXPECT_EQ(fitted, u"File " + Words(2900) + u" end.");
}

TEST(MessageText, OfMoreLinesThanAScreenHoldsTheMiddleIsLeftOut) {
    const std::u16string fitted = Fitted(u"Create file " + Words(31990) + u"end?");
    EXPECT_EQ(std::count(fitted.begin(), fitted.end(), u'\n'), 28);
    EXPECT_TRUE(fitted.starts_with(u"Create file " + Words(100) + u"\n" + Words(100)));
    EXPECT_NE(fitted.find(u"n\n\u2026\nn"), fitted.npos);
    EXPECT_TRUE(fitted.ends_with(u"nend?"));
}

TEST(MessageText, IsUnchangedWithoutMemory) {
    const uint64_t failures = FailEachAllocation([] {
        WString out;
        const bool built = BuildMessageText(Words(5000).c_str(), out);
        EXPECT_EQ(out.IsEmpty(), !built);
        return built;
    });
    EXPECT_GT(failures, 1u);
}

} // namespace
