#pragma once

#include "core/document/RunSupport.h"

// A document with a command that prints what the test asks for.
class AppendTest : public RunTest {
protected:
    static constexpr size_t ReadSize = 8191;

    AppendTest() { EXPECT_TRUE(RunSilently(*document)); }

    // Prints the bytes and polls until they are read, which may take more than one slice.
    void PrintAndPoll(const std::string& bytes) {
        Print(*document, bytes);
        do document->PollOutput();
        while (timers[&*document] != 250);
    }
    void End();
    // What a poll makes of the bytes that are new to it, taken in reads of a fixed size.
    static std::u16string Appended(const std::string& bytes);
    static std::string Repeated(const std::string& text, size_t times);
    void ExpectSound() const;

    TextDocument document;
};
