#pragma once

#include "settings/win32/DialogBase.h"

class UserPrompt;

// The program's name, version and license, and the way to the manual.
class AboutDialog final : public DialogBase {
public:
    explicit AboutDialog(UserPrompt& userPrompt) : prompt(userPrompt) {}

    void Init() override;
    void Command(uint32_t identifier) override;

private:
    UserPrompt& prompt;
};
