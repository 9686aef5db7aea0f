#include "app/CallLimit.h"
#include "app/FrameTest.h"

#include <algorithm>

// Ends the real program before each of the calls that change files, in turn, while it saves, and starts it again. The
// start that looks at what one save has left is that of the next save.

namespace {

class CallKillTest : public FrameTest {
protected:
    // How one kind of file is saved. The file's bytes are the old ones when an editor is started for it.
    struct Saving {
        std::wstring arguments; // of the start
        std::function<bool(Editor&)> isOpen;
        std::function<bool(Editor&)> prepare; // brings about what is to be saved
        std::function<void(Editor&)> save;
        std::function<std::string(const std::string&)> after; // the new bytes
        bool keepsPrevious = false;
    };

    void EndAtEachCall(const std::wstring& path, const Saving& saving) {
        target = path;
        files::EmptyRecovery();
        before = fresh = files::Read(path);
        uint64_t number = 1;
        for (bool hasEnded = true; hasEnded && number < 100; ++number) {
            SCOPED_TRACE("call " + std::to_string(number));
            hasEnded = EndOnce(saving, number);
            if (HasFailure()) return;
        }
        EXPECT_GT(number, 8u) << "the calls were not seen";
    }

private:
    // Whether the save made as many calls.
    bool EndOnce(const Saving& saving, uint64_t number) {
        std::unique_ptr<CallLimit> limit; // outlives the process
        Editor saver;
        const std::wstring told = ExpectedMessage();
        EXPECT_TRUE(saver.Start(saving.arguments, scratch.Folder()));
        ExpectTold(saver, told);
        EXPECT_TRUE(saving.isOpen(saver));
        before = files::Read(target);
        fresh = saving.after(before);
        EXPECT_TRUE(saving.prepare(saver));
        limit = std::make_unique<CallLimit>(saver.Process());
        EXPECT_TRUE(limit->EndBefore(
            number, {"CreateFileW", "WriteFile", "SetEndOfFile", "FlushFileBuffers", "DeleteFileW", "MoveFileExW"}));

        if (HasFailure()) return false;
        saving.save(saver);
        const bool hasEnded = !saver.Settle();
        LookAtFiles(saving, hasEnded);
        return hasEnded;
    }

    void LookAtFiles(const Saving& saving, bool hasEnded) {
        const std::string held = files::Read(target);
        if (!hasEnded) {
            EXPECT_TRUE(held == fresh);
            EXPECT_TRUE(files::RecoveryFiles(L"Copies").empty());
        }
        EXPECT_TRUE(held == before || held == fresh || HasCompleteCopy()) << "neither the old nor the new bytes";
        if (saving.keepsPrevious) ExpectWholeGeneration();
        if (held != before && held != fresh) RestartAfterTorn();
    }

    // As the next save would begin with the torn file, a start of its own looks at this one.
    void RestartAfterTorn() {
        const std::wstring told = ExpectedMessage();
        EXPECT_FALSE(told.empty());
        Editor next;
        EXPECT_TRUE(next.Start(L"", scratch.Folder()));
        ExpectTold(next, told);
        EXPECT_TRUE(files::Write(target, before));
    }

    static bool HasCompleteCopyOf(const std::string& bytes) {
        const std::vector<std::wstring> names = files::RecoveryFiles(L"Copies");
        return std::any_of(names.begin(), names.end(), [&](const std::wstring& name) {
            const std::string copy = files::Read(files::RecoveryPath() + L"\\Copies\\" + name);
            return copy.starts_with("OrvSave") && copy.ends_with(bytes);
        });
    }
    bool HasCompleteCopy() const { return HasCompleteCopyOf(fresh); }
    // One that was emptied is not wanted any more.
    static bool HasJournal() {
        const std::vector<std::wstring> names = files::RecoveryFiles(L"Journals");
        return std::any_of(names.begin(), names.end(), [](const std::wstring& name) {
            return !files::Read(files::RecoveryPath() + L"\\Journals\\" + name).empty();
        });
    }
    std::wstring Named() const { return files::RecoveryPath() + target.substr(target.rfind(L'\\')); }

    // The generation before is one that was there: the last one saved, or the one that was to be replaced.
    void ExpectWholeGeneration() {
        for (const std::wstring& name : files::RecoveryFiles(L"Previous")) {
            if (name.ends_with(L".new")) continue;
            const std::string kept = files::Read(files::RecoveryPath() + L"\\Previous\\" + name);
            EXPECT_TRUE(kept == before || kept == fresh) << "no whole generation";
            hasGeneration = true;
        }
        EXPECT_TRUE(!hasGeneration || !files::RecoveryFiles(L"Previous").empty());
    }

    // What the next start has to tell, by what is on the disk; empty for nothing.
    std::wstring ExpectedMessage() const {
        std::wstring message;
        if (files::Read(target) != fresh && HasCompleteCopy())
            message = target + L" was not saved completely.\nIts new contents are in " + Named() + L".";
        if (!HasJournal()) return message;
        if (!message.empty()) message += L"\n\n";
        return message + L"Changes were not saved when Orvane ended:\n" + target +
               L"\nOpen them now? With No they are offered again at the next start.";
    }
    void ExpectTold(Editor& started, const std::wstring& message) const {
        if (message.empty()) {
            EXPECT_TRUE(started.Settle());
            EXPECT_EQ(started.Dialog(), nullptr) << files::Utf8(window::DialogText(started.Dialog()));
            return;
        }
        const bool isQuestion = message.find(L"Open them now?") != std::wstring::npos;
        EXPECT_TRUE(started.Answer(message, isQuestion ? L"No" : L"OK")) << files::Utf8(message);
        if (message.starts_with(target)) {
            EXPECT_TRUE(files::Read(Named()) == fresh);
        }
        DeleteFileW(Named().c_str());
        // What was declined would be offered again.
        for (const std::wstring& name : files::RecoveryFiles(L"Journals"))
            DeleteFileW((files::RecoveryPath() + L"\\Journals\\" + name).c_str());
    }

    std::wstring target;
    std::string before;
    std::string fresh;
    bool hasGeneration = false;
};

} // namespace

TEST_F(CallKillTest, AModifiedTextIsOldOrNewWhereverItsSaveEnds) {
    std::string text;
    while (text.size() < 100000) text += "a line of a text of some pieces\r\n";
    ASSERT_TRUE(files::Write(Path(L"a.txt"), text));
    Saving saving;
    saving.arguments = L"a.txt";
    saving.isOpen = [this](Editor& saver) { return saver.WaitForTitle(TitleOf(L"a.txt")); };
    saving.prepare = [this](Editor& saver) {
        return saver.Type(L"x") && saver.WaitForTitle(TitleOf(L"a.txt", true)) &&
               window::WaitFor([] { return !files::RecoveryFiles(L"Journals").empty(); });
    };
    saving.save = [](Editor& saver) { saver.Command(IDM_SAVE); };
    saving.after = [](const std::string& bytes) { return "x" + bytes; };
    EndAtEachCall(Path(L"a.txt"), saving);
}

TEST_F(CallKillTest, SettingsAreOldOrNewWhereverTheirSaveEnds) {
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\r\nShowWhitespace=0\r\n"));
    ASSERT_TRUE(Start());
    HWND dialog = OpenDialog(IDM_OPTIONS);
    ASSERT_TRUE(dialog && window::PressButton(dialog, L"OK") && WaitUntilSaved());
    editor.Close();
    DWORD code = 0;
    ASSERT_TRUE(editor.WaitForEnd(code));
    Saving saving;
    saving.isOpen = [](Editor& saver) { return saver.WaitForTitle(L"Untitled1 - Orvane"); };
    saving.prepare = [&](Editor& saver) {
        saver.Command(IDM_OPTIONS);
        dialog = saver.WaitForDialog();
        const HWND box = dialog ? window::Control(dialog, IDC_SHOW_WHITESPACE) : nullptr;
        return box && PostMessageW(box, BM_CLICK, 0, 0);
    };
    saving.save = [&](Editor& saver) {
        EXPECT_TRUE(window::PressButton(dialog, L"OK"));
        window::WaitFor([&] { return !saver.IsRunning() || !saver.Dialog(); });
    };
    saving.after = [](std::string bytes) {
        const size_t value = bytes.find("ShowWhitespace=") + 15;
        bytes[value] = bytes[value] == '0' ? '1' : '0';
        return bytes;
    };
    saving.keepsPrevious = true;
    EndAtEachCall(files::SettingsPath(), saving);
}

TEST_F(CallKillTest, ASessionIsOldOrNewWhereverItsSaveEnds) {
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "1\r\n2\r\n"));
    const std::string one = "sessionfile\r\ne " + files::Utf8(Path(L"a.txt")) + "\r\nl 1\r\n";
    const std::string two = "sessionfile\r\ne " + files::Utf8(Path(L"a.txt")) + "\r\nl 2\r\n";
    ASSERT_TRUE(files::Write(Path(L"s.ses"), one));
    Saving saving;
    saving.arguments = L"-r s.ses";
    saving.isOpen = [this](Editor& saver) { return saver.WaitForTitle(TitleOf(L"a.txt")); };
    saving.prepare = [&](Editor& saver) {
        const bool isOne = files::Read(Path(L"s.ses")) == one;
        return saver.Keys(isOne ? L"Down" : L"Up") && saver.WaitForStatus(2, isOne ? L"\tLn 2" : L"\tLn 1");
    };
    saving.save = [](Editor& saver) { static_cast<void>(saver.RunCommandLine(L"savesession s.ses")); };
    saving.after = [&](const std::string& bytes) { return bytes == one ? two : one; };
    saving.keepsPrevious = true;
    EndAtEachCall(Path(L"s.ses"), saving);
}
