// What is made of the place of the settings file when the system's answer about it does not come.

#include "CallCounter.h"
#include "app/win32/SettingsStore.h"
#include "support/FailureInjection.h"
#include "view/TextViewTest.h"

namespace {

bool looksElsewhere = false;

// So long that the path of the file has to be copied before the system takes it.
HRESULT WINAPI LongFolder(HWND, int, HANDLE, DWORD, LPWSTR folder) {
    std::wcscpy(folder, (L"C:\\" + std::wstring(MAX_PATH - 16, L'n')).c_str());
    return S_OK;
}
DWORD WINAPI IsThere(LPCWSTR) { return FILE_ATTRIBUTE_ARCHIVE; }
DWORD WINAPI LookElsewhere(LPCWSTR, LPCWSTR, LPCWSTR, DWORD, LPWSTR, LPWSTR*) {
    looksElsewhere = true;
    return 0;
}

class SettingsStoreTest : public TextViewTest {
private:
    ReplacedImport folder{"SHGetFolderPathW", reinterpret_cast<void*>(LongFolder)};
    ReplacedImport kind{"GetFileAttributesW", reinterpret_cast<void*>(IsThere)};
    ReplacedImport search{"SearchPathW", reinterpret_cast<void*>(LookElsewhere)};
};

} // namespace

// The settings of another place would be saved there, and the user's would seem to be lost.
TEST_F(SettingsStoreTest, WithoutMemoryToAskForTheFileNoOtherIsTaken) {
    SettingsStore store(recoveryServices.saver);
    ASSERT_TRUE(store.Load());
    const IniFile* before = &store.Ini();
    looksElsewhere = false;
    const uint64_t failures = FailEachAllocation([&] {
        const bool isLoaded = store.Load();
        EXPECT_FALSE(looksElsewhere);
        EXPECT_EQ(&store.Ini() == before, !isLoaded);
        before = &store.Ini();
        return isLoaded;
    });
    EXPECT_GT(failures, 2u);
}
