#pragma once

#include "CallCounter.h"
#include "OwnFrameTest.h"
#include "app/OpenFiles.h"
#include "binary/HexClipboard.h"
#include "binary/HexTyping.h"
#include "binary/win32/HexView.h"
#include "resource.h"
#include "support/ScratchFolder.h"

// A test of bytes in a frame of the test's own process. Message boxes are recorded instead of shown.
class HexFrameTest : public OwnFrameTest {
protected:
    using Messages = std::vector<std::wstring>;

    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        messages.clear();
    }

    void Open(const std::string& bytes) {
        const std::u16string written = folder.Write("data.bin", bytes);
        path.assign(written.begin(), written.end());
        ASSERT_TRUE(OpenBinaryArgument(main->Commands(), written.c_str()));
        file = static_cast<BinaryDocument*>(main->Commands().Documents().At(0));
        editor = Views().at(0);
    }
    // In the order in which they were made.
    std::vector<HexEditor*> Views() const {
        std::vector<HexEditor*> views;
        ViewNode* next = nullptr;
        do {
            views.push_back(&static_cast<HexView*>(file->EnumViews(next, next)->AsView())->Editor());
        } while (next);
        return views;
    }
    std::vector<HWND> Panes() const {
        std::vector<HWND> panes;
        HWND pane = nullptr;
        while ((pane = FindWindowExW(main->Window(), pane, L"OrvaneVWnd", nullptr)) != nullptr) panes.push_back(pane);
        return panes;
    }
    // Sends the window of the first pane characters.
    void Type(const std::wstring& digits) const {
        for (const wchar_t digit : digits) SendMessageW(Panes().at(0), WM_CHAR, static_cast<WPARAM>(digit), 1);
    }
    // What the editor says while it carries out a command.
    Messages MessagesOf(UINT command) const {
        messages.clear();
        Command(command);
        return messages;
    }
    bool TitleShows(bool modified) const {
        wchar_t text[512] = {};
        GetWindowTextW(main->Window(), text, 512);
        return text == path + (modified ? L"* - Orvane" : L" - Orvane");
    }
    std::string Content() const {
        std::string bytes(static_cast<size_t>(file->FileSize()), '\0');
        EXPECT_TRUE(file->ReadBytes(0, reinterpret_cast<uint8_t*>(bytes.data()), bytes.size()));
        return bytes;
    }
    std::string OnDisk() const { return folder.Read("data.bin"); }

    static inline Messages messages; // since the last command
    ScratchFolder folder;
    std::wstring path;
    BinaryDocument* file = nullptr;
    HexEditor* editor = nullptr;

private:
    static int WINAPI TakeMessage(HWND, LPCWSTR text, LPCWSTR, UINT) {
        messages.push_back(text);
        return IDOK;
    }

    const ReplacedImport box{"MessageBoxW", reinterpret_cast<void*>(TakeMessage)};
};
