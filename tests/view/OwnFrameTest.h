#pragma once

#include "app/win32/MainFrame.h"
#include "view/TextViewTest.h"

// A test of a frame in the test's own process, without a document at first.
class OwnFrameTest : public TextViewTest {
protected:
    void SetUp() override {
        TextViewTest::SetUp();
        const HINSTANCE instance = GetModuleHandleW(nullptr);
        INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
        InitCommonControlsEx(&controls);
        BeforeFrame();
        main = std::make_unique<MainFrame>(store, recoveryServices);
        ASSERT_TRUE(main->Create(instance));
    }
    void TearDown() override {
        LeaveFrame();
        TextViewTest::TearDown();
    }
    // A test may do it before its end.
    void LeaveFrame() {
        if (!main) return;
        SendMessageW(main->Window(), WM_USER, 0, 0); // leave without asking
        // With its window the frame ends the message loop, of which the next test wants to know nothing.
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT)
            DispatchMessageW(&message);
        main.reset();
    }

    // The settings are there; the frame is about to be made of them.
    virtual void BeforeFrame() {}

    void Command(UINT number) const { SendMessageW(main->Window(), WM_COMMAND, number, 0); }

    SettingsStore store{recoveryServices.saver}; // nothing is loaded into it
    std::unique_ptr<MainFrame> main;
};
