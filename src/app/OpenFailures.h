#pragma once

#include "base/WString.h"

class ScreenBatch;
class UserPrompt;

// Tells the user which files could not be opened: a single one immediately, those of a batch in one message at its end.
// Of very many the first few are named and the rest counted.
class OpenFailures {
public:
    static constexpr uint32_t MaxNames = 10;

    OpenFailures(ScreenBatch& batch, UserPrompt& user) : screen(batch), prompt(user) {}
    OpenFailures(const OpenFailures&) = delete;
    OpenFailures& operator=(const OpenFailures&) = delete;

    // Without memory a name is left out.
    void Report(const Char* path);
    // Call it when a batch has ended.
    void BatchEnded();

private:
    void Gather(const Char* path);
    void Tell(const Char* files);

    ScreenBatch& screen;
    UserPrompt& prompt;
    WString names; // one a line
    uint32_t count = 0;
};
