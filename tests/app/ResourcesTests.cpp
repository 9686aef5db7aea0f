#include "base/win32/Windows.h"
#include "resource.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <vector>

// The menus and the accelerator table of the built program, read from its file.

namespace {

class ResourcesTest : public testing::Test {
protected:
    void SetUp() override {
        wchar_t path[1024] = {};
        if (!GetEnvironmentVariableW(L"ORVANE_EXE", path, 1024)) wcscpy(path, L"orvane.exe");
        module = LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE);
        ASSERT_TRUE(module);
    }
    void TearDown() override { FreeLibrary(module); }

    HMENU LoadMenuOf(UINT id) { return LoadMenuW(module, MAKEINTRESOURCEW(id)); }

    HMODULE module = nullptr;
};

struct MenuText {
    UINT command;
    const wchar_t* text;
};

const MenuText MainMenu[] = {
    {40009, L"&New\tCtrl+N"},
    {40010, L"&Open...\tCtrl+O"},
    {40011, L"&Close\tCtrl+F4"},
    {40012, L"&Save\tCtrl+S"},
    {40013, L"Save &As..."},
    {40014, L"Save A&ll"},
    {40001, L"E&xit"},
    {40004, L"&Undo\tCtrl+Z"},
    {40005, L"&Redo\tCtrl+Y"},
    {40006, L"Cu&t\tCtrl+X"},
    {40007, L"&Copy\tCtrl+C"},
    {40008, L"&Paste\tCtrl+V"},
    {40037, L"&Delete\tDel"},
    {40038, L"Select &All\tCtrl+A"},
    {40045, L"Copy &Html\tCtrl+Shift+H"},
    {40035, L"&Find...\tCtrl+F"},
    {40036, L"R&eplace...\tCtrl+H"},
    {40039, L"&Goto...\tCtrl+G"},
    {40040, L"&Bookmark\tCtrl+F2"},
    {40041, L"&Quick Open\tCtrl+Shift+G"},
    {40029, L"&Stop Tool\tCtrl+Break"},
    {40024, L"Co&mmand Window\tAlt+C"},
    {40031, L"&Record Macro\tCtrl+Shift+R"},
    {40032, L"&Play Macro\tCtrl+Shift+P"},
    {40033, L"&Customize..."},
    {40034, L"&Options..."},
    {40017, L"&Split Vertically\tAlt+Right"},
    {40018, L"S&plit Horizontally\tAltl+Down"},
    {40019, L"&Close\tAlt+Left"},
    {40044, L"Close &Output Windows\tAlt+Shift+Left"},
    {40042, L"&Next\tF6"},
    {40043, L"&Previous\tShift+F6"},
    {40020, L"&Next File\tAlt+N"},
    {40021, L"P&revious File\tAlt+P"},
    {40003, L"&Online Help"},
    {40002, L"&About"},
};

std::wstring TextOf(HMENU menu, UINT command) {
    wchar_t buffer[128] = {};
    GetMenuStringW(menu, command, buffer, 128, MF_BYCOMMAND);
    return buffer;
}

using Key = std::tuple<int, int, int>; // modifier flags, key, command

} // namespace

TEST_F(ResourcesTest, TheMainMenuHoldsEveryCommandInOrder) {
    const HMENU menu = LoadMenuOf(IDR_MAIN_MENU);
    ASSERT_TRUE(menu);
    std::vector<UINT> commands;
    for (int popup = 0; popup < GetMenuItemCount(menu); popup++) {
        const HMENU items = GetSubMenu(menu, popup);
        for (int i = 0; i < GetMenuItemCount(items); i++) {
            const UINT id = GetMenuItemID(items, i);
            if (id && id < IDM_FIRST_DOCUMENT) commands.push_back(id);
        }
    }
    ASSERT_EQ(commands.size(), std::size(MainMenu));
    for (size_t i = 0; i < commands.size(); i++) {
        EXPECT_EQ(commands[i], MainMenu[i].command);
        EXPECT_EQ(TextOf(menu, commands[i]), MainMenu[i].text);
    }
    // The placeholders of the tools and of the document list, which ends its popup.
    EXPECT_NE(GetMenuState(menu, 46000, MF_BYCOMMAND), UINT(-1));
    const HMENU windows = GetSubMenu(menu, 3);
    EXPECT_EQ(GetMenuItemID(windows, GetMenuItemCount(windows) - 1), 45000u);
    DestroyMenu(menu);
}

TEST_F(ResourcesTest, TheContextMenuHoldsTheEditCommands) {
    const HMENU menu = LoadMenuOf(106);
    ASSERT_TRUE(menu);
    const HMENU popup = GetSubMenu(menu, 0);
    ASSERT_TRUE(popup);
    std::vector<UINT> commands;
    for (int i = 0; i < GetMenuItemCount(popup); i++) commands.push_back(GetMenuItemID(popup, i));
    EXPECT_EQ(commands, (std::vector<UINT>{40004, 40005, 0, 40006, 40007, 40008, 40037, 0, 40038}));
    DestroyMenu(menu);
}

TEST_F(ResourcesTest, TheAcceleratorTableBindsExactlyTheseKeys) {
    const HACCEL table = LoadAcceleratorsW(module, MAKEINTRESOURCEW(103));
    ASSERT_TRUE(table);
    std::vector<ACCEL> entries(static_cast<size_t>(CopyAcceleratorTableW(table, nullptr, 0)));
    CopyAcceleratorTableW(table, entries.data(), static_cast<int>(entries.size()));
    std::vector<Key> keys;
    for (const ACCEL& entry : entries)
        keys.emplace_back(entry.fVirt & (FVIRTKEY | FSHIFT | FCONTROL | FALT), entry.key, entry.cmd);
    const int plain = FVIRTKEY;
    const int ctrl = FVIRTKEY | FCONTROL;
    const int alt = FVIRTKEY | FALT;
    std::vector<Key> expected = {
        {ctrl, 'N', 40009},
        {ctrl, 'O', 40010},
        {ctrl, VK_F4, 40011},
        {ctrl, 'S', 40012},
        {ctrl | FSHIFT, 'H', 40045},
        {ctrl | FSHIFT, 'G', 40041},
        {ctrl, VK_CANCEL, 40029},
        {alt, 'C', 40024},
        {ctrl | FSHIFT, 'R', 40031},
        {ctrl | FSHIFT, 'P', 40032},
        {alt, VK_RIGHT, 40017},
        {alt, VK_DOWN, 40018},
        {alt, VK_LEFT, 40019},
        {alt | FSHIFT, VK_LEFT, 40044},
        {plain, VK_F6, 40042},
        {plain | FSHIFT, VK_F6, 40043},
        {plain | FSHIFT, VK_F6, 40043},
        {alt, 'N', 40020},
        {alt, 'P', 40021},
    };
    std::sort(keys.begin(), keys.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(keys, expected);
}

TEST_F(ResourcesTest, TheDialogsAreThere) {
    for (const UINT id :
         {102u, 104u, 110u, 1540u, 1541u, static_cast<unsigned>(IDD_OPTIONS), static_cast<unsigned>(IDD_TOOLS)})
        EXPECT_TRUE(FindResourceW(module, MAKEINTRESOURCEW(id), RT_DIALOG)) << id;
}

TEST_F(ResourcesTest, TheIconAndTheVersionAreThere) {
    EXPECT_TRUE(FindResourceW(module, MAKEINTRESOURCEW(IDI_ORVANE), RT_GROUP_ICON));
    EXPECT_TRUE(FindResourceW(module, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION));
}

TEST_F(ResourcesTest, TheManifestAsksForWhatTheProgramNeeds) {
    const HRSRC found = FindResourceW(module, CREATEPROCESS_MANIFEST_RESOURCE_ID, RT_MANIFEST);
    ASSERT_TRUE(found);
    const char* text = static_cast<const char*>(LockResource(LoadResource(module, found)));
    ASSERT_TRUE(text);
    const std::string manifest(text, SizeofResource(module, found));
    for (const char* wanted : {"Microsoft.Windows.Common-Controls", "version=\"6.0.0.0\"", "PerMonitorV2",
                               ">true</longPathAware>", "level=\"asInvoker\""})
        EXPECT_NE(manifest.find(wanted), std::string::npos) << wanted;
    EXPECT_EQ(manifest.find("<activeCodePage"), std::string::npos) << "files are read in the user's own code page";
}
