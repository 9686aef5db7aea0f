// What a pane with bytes answers to screen readers.
#include "AccessibleSupport.h"
#include "HexFrameTest.h"

namespace {

class HexReaderTest : public HexFrameTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(automationCalls.AreRecorded());
        ASSERT_NO_FATAL_FAILURE(HexFrameTest::SetUp());
    }
    static std::u16string ValueOf(IRawElementProviderSimple* element) {
        IUnknown* made = nullptr;
        EXPECT_EQ(element->GetPatternProvider(UIA_ValuePatternId, &made), S_OK);
        const ComReference<IValueProvider> value(static_cast<IValueProvider*>(made));
        BSTR text = nullptr;
        EXPECT_EQ(value->get_Value(&text), S_OK);
        return Taken(text);
    }

    const AutomationCalls automationCalls;
};

TEST_F(HexReaderTest, APaneOfBytesHasANameAndARow) {
    Open("0123456789abcdefHi");
    AutomationCalls::returned = nullptr;
    EXPECT_NE(SendMessageW(Panes().at(0), WM_GETOBJECT, 0, Uia::RootObject), 0);
    ASSERT_NE(AutomationCalls::returned, nullptr);
    AutomationCalls::returned->AddRef();
    const ComReference<IRawElementProviderSimple> element(AutomationCalls::returned);
    VARIANT value = {};
    EXPECT_EQ(element->GetPropertyValue(UIA_ControlTypePropertyId, &value), S_OK);
    EXPECT_EQ(value.lVal, Uia::EditControl);
    EXPECT_EQ(element->GetPropertyValue(UIA_NamePropertyId, &value), S_OK);
    EXPECT_EQ(Taken(value.bstrVal), std::u16string(path.begin(), path.end()));
    EXPECT_EQ(ValueOf(element.Get()), u"0000000000  30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66  0123456789abcdef");
    SendMessageW(Panes().at(0), WM_KEYDOWN, VK_DOWN, 1);
    EXPECT_EQ(ValueOf(element.Get()), u"0000000010  48 69  Hi");
    IUnknown* text = nullptr;
    EXPECT_EQ(element->GetPatternProvider(UIA_TextPatternId, &text), S_OK);
    EXPECT_EQ(text, nullptr);
}

} // namespace
