#pragma once

#include "settings/win32/DialogBase.h"

class Ole;
class UserPrompt;

// The program's name, version and license, and the way to the manual.
class AboutDialog final : public DialogBase {
public:
    AboutDialog(UserPrompt& userPrompt, Ole& sharedOle) : prompt(userPrompt), ole(sharedOle) {}

    void Init() override;
    void Command(uint32_t identifier) override;

private:
    UserPrompt& prompt;
    Ole& ole;
};
