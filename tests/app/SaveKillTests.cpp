#include "app/AppTest.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <random>

// Ends the real program in the middle of saving 200 MB, again and again. That takes minutes: scripts/check-save-kill
// says how often.

namespace {

using Clock = std::chrono::steady_clock;

class SaveKillTest : public AppTest {
protected:
    // Mixed line ends become CR LF when the text is saved unedited, so that old and new bytes differ everywhere.
    static std::string Lines(const std::string& first, const std::string& others) {
        std::string bytes = first;
        bytes.reserve(Size + others.size());
        while (bytes.size() < Size) bytes += others;
        return bytes;
    }
    static std::vector<std::wstring> Copies() { return files::RecoveryFiles(L"Copies"); }
    // Has an editor save the file, and waits until it has begun to.
    bool BeginSaving(Editor& saving) {
        if (!saving.Start(L"big.txt", scratch.Folder()) || !saving.WaitForTitle(Path(L"big.txt") + L" - Orvane"))
            return false;
        saving.Command(IDM_SAVE);
        return window::WaitFor([] { return !Copies().empty(); });
    }
    static bool IsCompleteCopy(const std::wstring& name, const std::string& bytes) {
        const std::string copy = files::Read(files::RecoveryPath() + L"\\Copies\\" + name);
        return copy.starts_with("OrvSave") && copy.ends_with(bytes);
    }

    static constexpr size_t Size = 200000000;
};

} // namespace

TEST_F(SaveKillTest, OldOrNewBytesAreOnTheDiskWheneverItEnds) {
    const char* const wanted = std::getenv("ORVANE_KILLS");
    if (!wanted) GTEST_SKIP() << "scripts/check-save-kill does this";
    const std::string old = Lines("first\r\n", "one line of a large text\n");
    std::string saved;
    for (const char c : old) {
        if (c == '\n' && !saved.ends_with('\r')) saved += '\r';
        saved += c;
    }
    ASSERT_TRUE(files::Write(Path(L"big.txt"), old));
    Clock::duration whole{};
    {
        Editor undisturbed;
        ASSERT_TRUE(BeginSaving(undisturbed));
        const auto start = Clock::now();
        ASSERT_TRUE(window::WaitFor([] { return Copies().empty(); }));
        whole = Clock::now() - start;
    }
    ASSERT_TRUE(files::Read(Path(L"big.txt")) == saved);

    std::mt19937 random(1);
    int unchanged = 0, complete = 0, inCopy = 0;
    for (int i = std::atoi(wanted); i > 0; --i) {
        files::EmptyRecovery();
        ASSERT_TRUE(files::Write(Path(L"big.txt"), old));
        {
            Editor killed;
            ASSERT_TRUE(BeginSaving(killed));
            const double share = random() % 1000 / 1000.0;
            Sleep(static_cast<DWORD>(std::chrono::duration<double, std::milli>(whole).count() * share));
        }
        const std::string held = files::Read(Path(L"big.txt"));
        if (held == old) {
            ++unchanged;
        } else if (held == saved) {
            ++complete;
        } else {
            const auto copies = Copies();
            ASSERT_EQ(copies.size(), 1u);
            ASSERT_TRUE(IsCompleteCopy(copies[0], saved));
            ++inCopy;
        }
    }
    std::cout << "old bytes " << unchanged << ", new bytes " << complete << ", new bytes in the copy " << inCopy
              << '\n';
}
