#pragma once

#include "base/Types.h"
#include "viewbase/MessageKind.h"

// Tells or asks the user something and waits for the answer. Messages are handled meanwhile, so that
// anything may have changed afterwards.
class UserPrompt {
public:
    virtual Answer AskUser(const Char* text, MessageKind kind) = 0;

protected:
    ~UserPrompt() = default;
};
