#include "settings/win32/DialogBase.h"

#include "resource.h"
#include "view/DialogDriver.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace {

using dialog::Parent;

// Shows the Go To dialog and records what reaches its operations.
class RecordingDialog : public DialogBase {
public:
    std::vector<UINT> messages;
    std::vector<bool> answers;
    std::vector<uint32_t> commands;
    uint32_t inits = 0;
    uint32_t oks = 0;
    uint32_t cancels = 0;
    std::function<void(RecordingDialog&)> onInit;

    void Init() override {
        ++inits;
        if (onInit) onInit(*this);
    }
    bool Message(UINT message, WPARAM wparam, LPARAM lparam) override {
        messages.push_back(message);
        const bool handled = DialogBase::Message(message, wparam, lparam);
        answers.push_back(handled);
        return handled;
    }
    void Command(uint32_t identifier) override {
        commands.push_back(identifier);
        DialogBase::Command(identifier);
    }
    void Ok() override {
        ++oks;
        DialogBase::Ok();
    }
    void Cancel() override {
        ++cancels;
        DialogBase::Cancel();
    }

    bool Saw(uint32_t command) const { return std::count(commands.begin(), commands.end(), command) > 0; }
    HWND Window() const { return window; }
    HWND Owner() const { return owner; }
    void Centre() { CentreOverParent(); }
    void Post(WPARAM wparam) const { PostMessageW(window, WM_COMMAND, wparam, 0); }
    static INT_PTR CallProcedure(HWND dialog, UINT message) { return Procedure(dialog, message, 0, 0); }
};

// The slot of a virtual operation in the table of its class.
template <class Operation> size_t SlotOf(Operation operation) {
    size_t words[2];
    static_assert(sizeof(operation) == sizeof(words));
    std::memcpy(words, &operation, sizeof(words));
    return (words[0] - 1) / sizeof(void*);
}

uint32_t RunAndPost(RecordingDialog& dialog, WPARAM wparam, HWND owner = nullptr) {
    dialog.onInit = [wparam](RecordingDialog& shown) { shown.Post(wparam); };
    return dialog.Run(IDD_GOTO, owner);
}

TEST(DialogBase, OperationsHaveTheFixedOrder) {
    EXPECT_EQ(SlotOf(&DialogBase::Init), 0u);
    EXPECT_EQ(SlotOf(&DialogBase::Message), 1u);
    EXPECT_EQ(SlotOf(&DialogBase::Command), 2u);
    EXPECT_EQ(SlotOf(&DialogBase::Ok), 3u);
    EXPECT_EQ(SlotOf(&DialogBase::Cancel), 4u);
}

TEST(DialogBase, OkEndsWithOne) {
    RecordingDialog dialog;
    EXPECT_EQ(RunAndPost(dialog, IDOK), 1u);
    EXPECT_EQ(dialog.oks, 1u);
    EXPECT_EQ(dialog.cancels, 0u);
    EXPECT_TRUE(dialog.Saw(1));
}

TEST(DialogBase, CancelEndsWithTwo) {
    RecordingDialog dialog;
    EXPECT_EQ(RunAndPost(dialog, IDCANCEL), 2u);
    EXPECT_EQ(dialog.oks, 0u);
    EXPECT_EQ(dialog.cancels, 1u);
    EXPECT_TRUE(dialog.Saw(2));
}

TEST(DialogBase, CommandIsTheLowWordOnly) {
    RecordingDialog dialog;
    EXPECT_EQ(RunAndPost(dialog, MAKEWPARAM(IDOK, BN_DOUBLECLICKED)), 1u);
    EXPECT_TRUE(dialog.Saw(1));
}

TEST(DialogBase, OtherCommandsEndNothing) {
    RecordingDialog dialog;
    dialog.onInit = [](RecordingDialog& shown) {
        shown.Post(MAKEWPARAM(1234, EN_CHANGE));
        shown.Post(IDCANCEL);
    };
    EXPECT_EQ(dialog.Run(IDD_GOTO, nullptr), 2u);
    EXPECT_TRUE(dialog.Saw(1234));
    EXPECT_EQ(dialog.oks, 0u);
}

TEST(DialogBase, InitComesOnceWhenTheControlsExist) {
    const Parent parent(400, 300);
    RecordingDialog dialog;
    dialog.onInit = [&](RecordingDialog& shown) {
        EXPECT_NE(GetDlgItem(shown.Window(), IDC_GOTO_NUMBER), nullptr);
        EXPECT_EQ(shown.Owner(), parent.Get());
        EXPECT_FALSE(IsWindowVisible(shown.Window()));
        shown.Post(IDOK);
    };
    EXPECT_EQ(dialog.Run(IDD_GOTO, parent.Get()), 1u);
    EXPECT_EQ(dialog.inits, 1u);
    EXPECT_EQ(dialog.Window(), nullptr);
}

TEST(DialogBase, NothingArrivesBeforeTheInitialisation) {
    RecordingDialog dialog;
    RunAndPost(dialog, IDOK);
    ASSERT_FALSE(dialog.messages.empty());
    EXPECT_EQ(dialog.messages.front(), static_cast<UINT>(WM_INITDIALOG));
}

TEST(DialogBase, OnlyTheInitialisationIsReportedHandled) {
    RecordingDialog dialog;
    RunAndPost(dialog, IDOK);
    ASSERT_GT(dialog.messages.size(), 1u);
    for (size_t i = 0; i < dialog.messages.size(); ++i) {
        EXPECT_EQ(dialog.answers[i], dialog.messages[i] == WM_INITDIALOG) << "message " << dialog.messages[i];
    }
}

TEST(DialogBase, MessagesWithoutAnObjectGoToTheDefaultHandling) {
    RecordingDialog dialog;
    dialog.onInit = [](RecordingDialog& shown) {
        const LONG_PTR object = SetWindowLongPtrW(shown.Window(), DWLP_USER, 0);
        EXPECT_EQ(object, reinterpret_cast<LONG_PTR>(static_cast<DialogBase*>(&shown)));
        EXPECT_EQ(RecordingDialog::CallProcedure(shown.Window(), WM_COMMAND), 0);
        EXPECT_EQ(RecordingDialog::CallProcedure(shown.Window(), WM_SIZE), 0);
        SetWindowLongPtrW(shown.Window(), DWLP_USER, object);
        shown.Post(IDOK);
    };
    EXPECT_EQ(dialog.Run(IDD_GOTO, nullptr), 1u);
}

TEST(DialogBase, MissingResourceGivesNeitherAnswer) {
    RecordingDialog dialog;
    EXPECT_EQ(dialog.Run(9999, nullptr), 0u);
    EXPECT_EQ(dialog.inits, 0u);
}

struct Placement {
    POINT corner; // in the parent's client coordinates
    SIZE before;
    SIZE after;
    RECT client;
};

SIZE SizeOf(HWND window) {
    RECT area = {};
    GetWindowRect(window, &area);
    return {area.right - area.left, area.bottom - area.top};
}

Placement CentreOver(const Parent& parent) {
    Placement placement = {};
    RecordingDialog dialog;
    dialog.onInit = [&](RecordingDialog& shown) {
        placement.before = SizeOf(shown.Window());
        shown.Centre();
        placement.after = SizeOf(shown.Window());
        RECT area = {};
        GetWindowRect(shown.Window(), &area);
        placement.corner = {area.left, area.top};
        ScreenToClient(parent.Get(), &placement.corner);
        GetClientRect(shown.Window(), &placement.client);
        shown.Post(IDOK);
    };
    EXPECT_EQ(dialog.Run(IDD_GOTO, parent.Get()), 1u);
    return placement;
}

// The system tells only the dialog.
TEST(DialogBase, ItsControlsHearOfChangedColours) {
    static int heard;
    heard = 0;
    RecordingDialog dialog;
    dialog.onInit = [](RecordingDialog& shown) {
        const auto count = [](HWND control, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                              DWORD_PTR) -> LRESULT {
            heard += message == WM_SYSCOLORCHANGE;
            return DefSubclassProc(control, message, wparam, lparam);
        };
        for (const int control : {IDC_GOTO_NUMBER, IDOK})
            EXPECT_TRUE(SetWindowSubclass(GetDlgItem(shown.Window(), control), count, 7, 0));
        SendMessageW(shown.Window(), WM_SYSCOLORCHANGE, 0, 0);
        shown.Post(IDCANCEL);
    };
    dialog.Run(IDD_GOTO, nullptr);
    EXPECT_EQ(heard, 2);
}

TEST(DialogBase, CentresByClientSizesAndKeepsTheSize) {
    const Parent parent(801, 603);
    const Placement placement = CentreOver(parent);
    EXPECT_EQ(placement.corner.x, (801 - placement.client.right) / 2);
    EXPECT_EQ(placement.corner.y, (603 - placement.client.bottom) / 2);
    EXPECT_EQ(placement.after.cx, placement.before.cx);
    EXPECT_EQ(placement.after.cy, placement.before.cy);
}

TEST(DialogBase, LargerThanItsParentBeginsAboveAndLeftOfIt) {
    const Parent parent(40, 10);
    const Placement placement = CentreOver(parent);
    EXPECT_LT(placement.corner.x, 0);
    EXPECT_LT(placement.corner.y, 0);
    EXPECT_EQ(placement.corner.x, -((placement.client.right - 40) / 2));
    EXPECT_EQ(placement.corner.y, -((placement.client.bottom - 10) / 2));
}

} // namespace
