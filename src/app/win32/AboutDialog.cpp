#include "app/win32/AboutDialog.h"

#include "app/win32/HelpPage.h"
#include "resource.h"

void AboutDialog::Init() { CentreOverParent(); }

void AboutDialog::Command(uint32_t identifier) {
    if (identifier == IDC_ABOUT_MANUAL)
        OpenHelpPage(window, prompt, ole);
    else
        DialogBase::Command(identifier);
}
