// Files dropped onto the frame, and by what name its field is called.

#include "CallCounter.h"
#include "support/ScratchFolder.h"
#include "view/DialogLayout.h"
#include "view/OwnFrameTest.h"

#include <cstring>
#include <optional>
#include <shlobj.h>

namespace {

class FrameDropTest : public OwnFrameTest {
protected:
    void BeforeFrame() override {
        allowed.clear();
        filter.emplace("ChangeWindowMessageFilterEx", reinterpret_cast<void*>(Allow));
        foreground.emplace("SetForegroundWindow", reinterpret_cast<void*>(TakeForeground));
        EXPECT_TRUE(filter->IsImported() && foreground->IsImported());
    }
    void TearDown() override {
        foreground.reset();
        filter.reset();
        OwnFrameTest::TearDown();
    }
    void Drop(const std::u16string& path) const {
        const std::wstring names(path.begin(), path.end());
        const size_t size = sizeof(DROPFILES) + (names.size() + 2) * sizeof(wchar_t);
        const HGLOBAL block = GlobalAlloc(GHND, size);
        auto* const head = static_cast<DROPFILES*>(GlobalLock(block));
        head->pFiles = sizeof(DROPFILES);
        head->fWide = TRUE;
        std::memcpy(head + 1, names.data(), names.size() * sizeof(wchar_t));
        GlobalUnlock(block);
        SendMessageW(main->Window(), WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0);
    }

    static inline std::vector<UINT> allowed;
    static inline HWND broughtToFront = nullptr;

private:
    static BOOL WINAPI Allow(HWND window, UINT message, DWORD action, PCHANGEFILTERSTRUCT) {
        if (window && action == MSGFLT_ALLOW) allowed.push_back(message);
        return TRUE;
    }
    static BOOL WINAPI TakeForeground(HWND window) {
        broughtToFront = window;
        return TRUE;
    }

    std::optional<ReplacedImport> filter;
    std::optional<ReplacedImport> foreground;
};

TEST_F(FrameDropTest, AnElevatedFrameLetsDropsIn) {
    EXPECT_EQ(allowed, (std::vector<UINT>{WM_DROPFILES, WM_COPYDATA, 0x0049}));
}

TEST_F(FrameDropTest, WhatIsDroppedComesToTheFront) {
    const ScratchFolder folder;
    const std::u16string path = folder.Write("a.txt", "text");
    broughtToFront = nullptr;
    EnableWindow(main->Window(), FALSE); // beneath a dialog nothing is taken
    Drop(path);
    EXPECT_EQ(broughtToFront, nullptr);
    EnableWindow(main->Window(), TRUE);
    Drop(path);
    EXPECT_EQ(broughtToFront, main->Window());
    EXPECT_EQ(main->Commands().Documents().Count(), 1u);
}

TEST_F(FrameDropTest, TheCommandWindowHasAName) {
    EXPECT_EQ(dialog::NameOf(FindWindowExW(main->Window(), nullptr, WC_EDITW, nullptr)), L"Command");
}

} // namespace
