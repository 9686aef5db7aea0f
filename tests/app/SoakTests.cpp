#include "app/Clipboard.h"
#include "app/EditTest.h"
#include "app/Input.h"
#include "app/ProcessCounts.h"
#include "app/TypedText.h"
#include "resource.h"

#include <cstdio>
#include <cstdlib>
#include <random>

// A user who does whatever comes to mind, for a minute or for as many seconds as ORVANE_SOAK_SECONDS says. The text
// of one document always has to be what a model says. When all but that document is closed again, the program must
// hold no more of the system than it did after a first round of everything.

namespace {

constexpr UINT Dialogs[] = {IDM_OPTIONS, IDM_FIND, IDM_REPLACE, IDM_CUSTOMIZE, IDM_GOTO, IDM_ABOUT};
constexpr unsigned MostTabs = 4;
constexpr const wchar_t* Files[] = {L"source.cpp", L"page.html", L"long.txt"};
constexpr const wchar_t* Settings[] = {L"ShowLineNumbers 0", L"ShowLineNumbers 1", L"FontSize 14",
                                       L"FontSize 10",       L"ShowWhitespace 1",  L"ShowWhitespace 0",
                                       L"TextBg 202020",     L"TextBg FFFFFF",     L"MarginColor 808080"};
constexpr wchar_t Letters[] = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789;,.+*=_";

unsigned FromEnvironment(const char* name, unsigned otherwise) {
    const char* const value = std::getenv(name);
    return value ? static_cast<unsigned>(std::atoi(value)) : otherwise;
}

class SoakTest : public EditTest {
protected:
    using Action = void (SoakTest::*)();

    void Edit();
    void UndoAndRedo();
    void CompareText();
    void LookAtDialog();
    void LookAtDialog(UINT command, unsigned tabs);
    void EditFile();
    void EditFile(const std::wstring& name);
    void EditBytes();
    void Split();
    void ChangeSetting();
    void ChangeSetting(const std::wstring& line);
    void RunTool();
    void PlayMacro();
    void Resize();
    void WalkDocuments();
    void SaveSession();
    void UseMouse();

    static constexpr Action Actions[] = {
        &SoakTest::Edit,        &SoakTest::UndoAndRedo, &SoakTest::LookAtDialog,  &SoakTest::EditFile,
        &SoakTest::EditBytes,   &SoakTest::Split,       &SoakTest::ChangeSetting, &SoakTest::RunTool,
        &SoakTest::PlayMacro,   &SoakTest::Resize,      &SoakTest::WalkDocuments, &SoakTest::SaveSession,
        &SoakTest::UseMouse,    &SoakTest::Edit,        &SoakTest::Edit,          &SoakTest::Edit,
        &SoakTest::CompareText,
    };

    // 0 below 0: a pane may have no room left at all.
    unsigned Random(unsigned below) { return below ? static_cast<unsigned>(random() % below) : 0; }
    bool Chance(unsigned percent) { return Random(100) < percent; }

    // Strikes the keys and counts them.
    void Strike(const std::wstring& keys) {
        ASSERT_TRUE(editor.Keys(keys));
        for (const wchar_t unit : keys) done += unit == L' ';
        done++;
    }
    void RunLine(const std::wstring& line) {
        // Output that comes late takes the focus while the line is typed: then it is typed once more.
        if (!editor.RunCommandLine(line)) {
            if (editor.CommandWindow() && editor.Focus() == editor.CommandWindow()) {
                ASSERT_NO_FATAL_FAILURE(Strike(L"Escape"));
            }
            ASSERT_TRUE(editor.RunCommandLine(line)) << testing::PrintToString(line);
        }
        done += static_cast<unsigned>(line.size());
    }
    // Every choice of what draws once: the system keeps what it drew each dialog and control with.
    void DoEverything();
    void Act(DWORD milliseconds);
    bool IsFlat(const ProcessCounts& before, const ProcessCounts& after) const;
    bool WaitForName(const std::wstring& part) {
        return window::WaitFor([&] { return editor.Title().find(part) != std::wstring::npos; });
    }
    // Waits until the view with the focus has done what was struck: the status bar shows what Insert does. Before a
    // command that is posted: it would overtake the keys.
    void CatchUp() {
        ASSERT_NO_FATAL_FAILURE(Strike(L"Insert"));
        ASSERT_TRUE(editor.WaitForStatus(4, L"\tOVR"));
        ASSERT_NO_FATAL_FAILURE(Strike(L"Insert"));
        ASSERT_TRUE(editor.WaitForStatus(4, L"\tINS"));
    }
    // The document of the model, with the caret at its end.
    void ShowModel() {
        ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+1"));
        // Output that comes late brings its document to the front: then once more.
        if (!WaitForName(L"model.txt")) {
            ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+1"));
            ASSERT_TRUE(WaitForName(L"model.txt"));
        }
        ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+End"));
        model.Place(model.Text().size());
    }
    void CloseShown();
    void CloseAllButModel();
    std::wstring RandomMove();

    TypedText model;
    std::mt19937 random;
    unsigned done = 0;
};

void SoakTest::Edit() {
    ASSERT_NO_FATAL_FAILURE(ShowModel());
    struct Move {
        const wchar_t* name;
        void (TypedText::*move)(bool);
    };
    static constexpr Move Moves[] = {
        {L"Left", &TypedText::Left},
        {L"Right", &TypedText::Right},
        {L"Home", &TypedText::Home},
        {L"End", &TypedText::End},
        {L"Ctrl+Home", &TypedText::DocumentStart},
        {L"Ctrl+End", &TypedText::DocumentEnd},
    };
    for (int i = 0; i < 30; i++) {
        const unsigned kind = Random(10);
        if (kind < 6) {
            std::wstring typed;
            for (unsigned n = Random(8) + 1; n > 0; n--) typed += Letters[Random(std::size(Letters) - 1)];
            if (Chance(30)) typed += L'\n';
            ASSERT_TRUE(editor.Type(typed));
            for (const wchar_t unit : typed) model.Type(unit);
            done += static_cast<unsigned>(typed.size());
        } else if (kind < 8) {
            const Move& move = Moves[Random(std::size(Moves))];
            const bool shift = Chance(40);
            ASSERT_NO_FATAL_FAILURE(Strike(std::wstring(shift ? L"Shift+" : L"") + move.name));
            (model.*move.move)(shift);
        } else {
            ASSERT_NO_FATAL_FAILURE(Strike(kind == 8 ? L"Backspace" : L"Delete"));
            kind == 8 ? model.Backspace() : model.Delete();
        }
    }
    ASSERT_NO_FATAL_FAILURE(CatchUp());
}

void SoakTest::UndoAndRedo() {
    ASSERT_NO_FATAL_FAILURE(ShowModel());
    const unsigned count = Random(20) + 1;
    std::wstring keys;
    for (unsigned i = 0; i < count; i++) keys += L"Ctrl+Z ";
    for (unsigned i = 0; i < count; i++) keys += L"Ctrl+Y ";
    ASSERT_NO_FATAL_FAILURE(Strike(keys + L"Ctrl+End"));
    ASSERT_NO_FATAL_FAILURE(CatchUp());
    model.Place(model.Text().size());
}

void SoakTest::CompareText() {
    ASSERT_NO_FATAL_FAILURE(ShowModel());
    if (model.Text().empty()) return;
    ASSERT_NO_FATAL_FAILURE(ExpectText(model.Text()));
    ASSERT_FALSE(HasFailure());
    ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+End"));
}

void SoakTest::LookAtDialog() {
    const UINT command = Dialogs[Random(std::size(Dialogs))];
    LookAtDialog(command, Random(MostTabs + 1));
}

void SoakTest::LookAtDialog(UINT command, unsigned tabs) {
    ASSERT_TRUE(editor.Settle());
    editor.Command(command);
    ASSERT_TRUE(editor.WaitForDialog()) << command;
    for (; tabs > 0; tabs--) ASSERT_NO_FATAL_FAILURE(Strike(L"Tab"));
    ASSERT_NO_FATAL_FAILURE(Strike(L"Escape"));
    ASSERT_TRUE(editor.WaitForNoDialog());
}

std::wstring SoakTest::RandomMove() {
    static constexpr const wchar_t* Keys[] = {L"Up",       L"Down",        L"PageUp",    L"PageDown",   L"Shift+Right",
                                              L"Home",     L"End",         L"Ctrl+Left", L"Ctrl+Right", L"Shift+Down",
                                              L"Ctrl+End", L"Ctrl+Home",   L"Ctrl+]",    L"Ctrl+F2",    L"F2",
                                              L"Ctrl+A",   L"Shift+Right", L"Ctrl+Up",   L"Ctrl+Down",  L"Ctrl+W"};
    std::wstring keys;
    for (unsigned n = Random(20) + 1; n > 0; n--) keys += std::wstring(Keys[Random(std::size(Keys))]) + L" ";
    return keys + L"Left";
}

// Without saving.
void SoakTest::CloseShown() {
    ASSERT_TRUE(editor.Settle());
    const bool modified = editor.Title().ends_with(L"* - Orvane");
    editor.Command(IDM_CLOSE);
    if (modified) {
        const HWND box = editor.WaitForDialog();
        ASSERT_TRUE(box && window::PressButton(box, L"No"));
        ASSERT_TRUE(editor.WaitForNoDialog());
    }
    ASSERT_TRUE(editor.Settle());
}

void SoakTest::EditFile() { EditFile(Files[Random(std::size(Files))]); }

void SoakTest::EditFile(const std::wstring& name) {
    ASSERT_NO_FATAL_FAILURE(RunLine(L"edit " + name));
    ASSERT_TRUE(WaitForName(name));
    ASSERT_NO_FATAL_FAILURE(Strike(RandomMove()));
    if (Chance(50)) {
        ASSERT_TRUE(editor.Type(L"for (int i = 0; i < 3; i++) { // two\nx[i] = \"\";\n}"));
    }
    if (Chance(30)) {
        ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+A Ctrl+X Ctrl+Z Tab Shift+Tab"));
    }
    ASSERT_NO_FATAL_FAILURE(Strike(RandomMove()));
    ASSERT_NO_FATAL_FAILURE(CatchUp());
    if (Chance(70)) {
        ASSERT_NO_FATAL_FAILURE(CloseShown());
    }
}

void SoakTest::EditBytes() {
    ASSERT_NO_FATAL_FAILURE(RunLine(L"editbin bytes.bin"));
    ASSERT_TRUE(WaitForName(L"bytes.bin"));
    ASSERT_NO_FATAL_FAILURE(Strike(L"Home PageDown Up Right 0 A F 3 Ctrl+Z Ctrl+Home Shift+Down Ctrl+C Ctrl+A Right"));
    ASSERT_NO_FATAL_FAILURE(CloseShown());
}

void SoakTest::Split() {
    ASSERT_NO_FATAL_FAILURE(Strike(Chance(50) ? L"Alt+Right" : L"Alt+Down"));
    if (Chance(40)) {
        ASSERT_NO_FATAL_FAILURE(Strike(L"F6 PageDown Shift+F6 Ctrl+Tab"));
    }
    if (editor.Panes().size() > 1 && Chance(60)) {
        ASSERT_NO_FATAL_FAILURE(Strike(L"Alt+Left"));
    }
    ASSERT_NO_FATAL_FAILURE(CatchUp());
}

void SoakTest::ChangeSetting() { ChangeSetting(Settings[Random(std::size(Settings))]); }

void SoakTest::ChangeSetting(const std::wstring& line) { ASSERT_NO_FATAL_FAILURE(RunLine(L"setopt " + line)); }

void SoakTest::RunTool() {
    ASSERT_NO_FATAL_FAILURE(RunLine(L"cmd /c dir"));
    // Its document comes to the front with its first output, unless the user was faster.
    window::WaitFor([&] { return editor.Title() == L"cmd /c dir - Orvane"; }, 3000);
    ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+Home Down Escape"));
    ASSERT_NO_FATAL_FAILURE(CatchUp());
    if (Chance(50)) {
        editor.Command(IDM_CLOSE_OUTPUT_WINDOWS);
        ASSERT_TRUE(editor.Settle());
    }
}

// Into a document of its own.
void SoakTest::PlayMacro() {
    editor.Command(IDM_NEW);
    ASSERT_TRUE(editor.Settle());
    ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+Shift+R"));
    ASSERT_TRUE(WaitForName(L"Recording"));
    ASSERT_TRUE(editor.Type(L"one two\n"));
    ASSERT_NO_FATAL_FAILURE(Strike(L"Up Home Delete End"));
    ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+Shift+R"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.Title().find(L"Recording") == std::wstring::npos; }));
    for (unsigned n = Random(10); n > 0; n--) ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+Shift+P"));
    ASSERT_NO_FATAL_FAILURE(CatchUp());
    ASSERT_NO_FATAL_FAILURE(CloseShown());
}

void SoakTest::Resize() {
    SetWindowPos(editor.Main(), nullptr, 0, 0, static_cast<int>(300 + Random(900)), static_cast<int>(200 + Random(600)),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_TRUE(editor.Settle());
    done++;
}

void SoakTest::WalkDocuments() {
    ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+Tab Ctrl+Shift+Tab Alt+N Alt+P Ctrl+2 Ctrl+3"));
    ASSERT_NO_FATAL_FAILURE(CatchUp());
}

void SoakTest::SaveSession() {
    // It would ask whether to overwrite it.
    DeleteFileW(Path(L"soak.ses").c_str());
    ASSERT_NO_FATAL_FAILURE(RunLine(L"savesession \"" + Path(L"soak.ses") + L"\""));
}

void SoakTest::UseMouse() {
    const std::vector<HWND> panes = editor.Panes();
    RECT place = {};
    GetWindowRect(panes[Random(static_cast<unsigned>(panes.size()))], &place);
    const auto point = [&] {
        return POINT{place.left + static_cast<LONG>(Random(static_cast<unsigned>(place.right - place.left))),
                     place.top + static_cast<LONG>(Random(static_cast<unsigned>(place.bottom - place.top)))};
    };
    // Brings it to the front first.
    ASSERT_NO_FATAL_FAILURE(Strike(L"Left"));
    input::HoldLeftButton(point());
    input::MoveMouse(point());
    input::ReleaseLeftButton(point());
    input::MoveMouse({GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1});
    ASSERT_NO_FATAL_FAILURE(CatchUp());
    done += 4;
}

void SoakTest::CloseAllButModel() {
    for (size_t panes = editor.Panes().size(); panes > 1; panes--) {
        editor.Command(IDM_CLOSE_PANE);
        ASSERT_TRUE(window::WaitFor([&] { return editor.Panes().size() < panes; }));
    }
    editor.Command(IDM_CLOSE_OUTPUT_WINDOWS);
    for (int i = 0; i < 10; i++) {
        ASSERT_NO_FATAL_FAILURE(Strike(L"Ctrl+2"));
        ASSERT_TRUE(editor.Settle());
        if (editor.Title().find(L"model.txt") != std::wstring::npos) break;
        ASSERT_NO_FATAL_FAILURE(CloseShown());
    }
    ASSERT_NO_FATAL_FAILURE(ShowModel());
    for (const wchar_t* const line : {L"ShowLineNumbers 1", L"FontSize 10", L"ShowWhitespace 0", L"TextBg FFFFFF"})
        ASSERT_NO_FATAL_FAILURE(RunLine(std::wstring(L"setopt ") + line));
    SetWindowPos(editor.Main(), nullptr, 0, 0, 900, 600, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_TRUE(editor.Settle());
}

void SoakTest::DoEverything() {
    for (const wchar_t* const name : Files) ASSERT_NO_FATAL_FAILURE(EditFile(name));
    for (const wchar_t* const line : Settings) ASSERT_NO_FATAL_FAILURE(ChangeSetting(line));
    for (const UINT command : Dialogs) {
        for (unsigned tabs = 0; tabs <= MostTabs; tabs++) ASSERT_NO_FATAL_FAILURE(LookAtDialog(command, tabs));
    }
    for (const Action action : Actions) ASSERT_NO_FATAL_FAILURE((this->*action)());
}

// Whatever comes to mind for so long, then all is closed again.
void SoakTest::Act(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < milliseconds) {
        const size_t chosen = Random(std::size(Actions));
        ASSERT_NO_FATAL_FAILURE((this->*Actions[chosen])()) << "action " << chosen << " after " << done;
        ASSERT_TRUE(editor.IsRunning());
    }
    ASSERT_NO_FATAL_FAILURE(CloseAllButModel());
    ASSERT_NO_FATAL_FAILURE(CompareText());
}

// The undo records of the model's document stay.
bool SoakTest::IsFlat(const ProcessCounts& before, const ProcessCounts& after) const {
    return after.windows <= before.windows && after.drawingObjects <= before.drawingObjects + 8 &&
           after.handles <= before.handles + 8 && after.memory <= before.memory + (8u << 20) + done * 200u;
}

TEST_F(SoakTest, HoldsNoMoreThanAfterItsFirstRounds) {
    const unsigned seed = FromEnvironment("ORVANE_SOAK_SEED", GetTickCount());
    const DWORD length = FromEnvironment("ORVANE_SOAK_SECONDS", 60) * 1000;
    SCOPED_TRACE("seed " + std::to_string(seed));
    random.seed(seed);
    std::string longText;
    for (int i = 0; i < 20000; i++) longText += "line " + std::to_string(i) + "\r\n";
    ASSERT_TRUE(files::Write(Path(L"long.txt"), longText));
    ASSERT_TRUE(files::Write(Path(L"bytes.bin"), std::string(100000, '\x7F')));
    ASSERT_TRUE(files::Write(Path(L"source.cpp"), "int main() {\r\n    return 0; /* none */\r\n}\r\n"));
    ASSERT_TRUE(files::Write(Path(L"page.html"), "<html><body class=\"a\">text</body></html>\r\n"));
    ASSERT_TRUE(OpenFile(L"model.txt", ""));

    // Twice: fonts, libraries and stores grow to their size.
    for (int round = 0; round < 2; round++) {
        ASSERT_NO_FATAL_FAILURE(DoEverything());
        ASSERT_NO_FATAL_FAILURE(CloseAllButModel());
    }
    ProcessCounts before = CountsOf(editor.Process());
    ProcessCounts after = before;
    // The system keeps what it has drawn a state of a control with, whenever that first comes up. So what has grown
    // once may not grow on: a leak grows as much every time.
    for (int period = 1; period <= 3 && (period == 1 || !IsFlat(before, after)); period++) {
        before = after;
        done = 0;
        ASSERT_NO_FATAL_FAILURE(Act(length));
        after = CountsOf(editor.Process());
        std::cout << done << " actions, seed " << seed << "; before: " << before << "; after: " << after << '\n';
    }
    EXPECT_TRUE(IsFlat(before, after));
}

} // namespace
