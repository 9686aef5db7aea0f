#include "core/document/RunAppendTest.h"

#include <algorithm>

std::string AppendTest::Repeated(const std::string& text, size_t times) {
    std::string result;
    for (size_t i = 0; i < times; ++i) result += text;
    return result;
}

std::u16string AppendTest::Appended(const std::string& bytes) {
    std::u16string result;
    for (size_t at = 0; at < bytes.size(); at += ReadSize) {
        const std::string read = bytes.substr(at, ReadSize);
        for (const char c : read.substr(0, read.find('\0')))
            if (c != '\r') result += static_cast<uint8_t>(c);
    }
    return result;
}

void AppendTest::End() {
    speaker.Give("end");
    EXPECT_TRUE(ProcessHasEnded(*document));
    document->PollOutput();
    EXPECT_FALSE(IsRunning(*document));
}

void AppendTest::ExpectSound() const {
    const std::u16string text = document.Store();
    EXPECT_EQ(document->GetLineCount(), 1 + std::count(text.begin(), text.end(), u'\n'));
    EXPECT_EQ(document->Content()[text.size()], 0);
    EXPECT_EQ(TextBufferProbe::Capacity(*document), text.size() + 1);
}
