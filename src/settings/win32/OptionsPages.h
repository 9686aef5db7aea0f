#pragma once

#include "settings/Settings.h"
#include "settings/win32/DialogBase.h"

// One page of the Options dialog. It edits the dialog's copy of the settings.
class OptionsPage : public DialogBase {
public:
    explicit OptionsPage(SettingsRecord& edited) : copy(edited) {}

    void Init() override { Fill(); }
    // From the copy into the controls, and back.
    virtual void Fill() = 0;
    virtual void Apply() = 0;
    // OK and Cancel are the dialog's, not the page's.
    void Command(uint32_t) override {}
    void Show(bool show) { ShowWindow(window, show ? SW_SHOW : SW_HIDE); }
    HWND Window() const { return window; }

protected:
    SettingsRecord& copy;
};

class GeneralPage final : public OptionsPage {
public:
    using OptionsPage::OptionsPage;
    void Fill() override;
    void Apply() override;
};

class FontsPage final : public OptionsPage {
public:
    using OptionsPage::OptionsPage;
    void Fill() override;
    void Apply() override;
};

// Colours are stored in the copy as they are chosen.
class ColoursPage final : public OptionsPage {
public:
    using OptionsPage::OptionsPage;
    void Fill() override;
    void Apply() override {}
    bool Message(UINT message, WPARAM wparam, LPARAM lparam) override;
    void Command(uint32_t identifier) override;

private:
    using Cell = Colour SettingsRecord::*;
    struct Entry;

    const Entry& Selected() const;
    void ShowSelected();
    // Lets the user choose the colour of a cell; nothing happens without one.
    void Choose(Cell cell);
    void DrawPreview(const DRAWITEMSTRUCT& item) const;

    COLORREF customColours[16] = {}; // of the chooser, kept while the page lives
    static const Entry Entries[];
};
