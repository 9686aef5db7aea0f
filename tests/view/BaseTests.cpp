#include "base/Platform.h"
#include "base/win32/Handles.h"
#include "base/win32/WindowText.h"

#include "support/FailureInjection.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

// A window that is never shown.
class HiddenWindow {
public:
    explicit HiddenWindow(const std::u16string& text)
        : window(CreateWindowExW(0, L"EDIT", Wide(text.c_str()), WS_POPUP | ES_MULTILINE, 0, 0, 10, 10, nullptr,
                                 nullptr, GetModuleHandleW(nullptr), nullptr)) {
        EXPECT_NE(window, nullptr);
    }
    ~HiddenWindow() { DestroyWindow(window); }
    HWND Get() const { return window; }

private:
    HWND window;
};

std::u16string Content(const WString& string) { return {string.Text(), string.Length()}; }

// The clipboard is left empty.
void EmptyTheClipboard(HWND owner) {
    const OpenedClipboard clipboard(owner);
    ASSERT_TRUE(clipboard.IsOpen());
    EXPECT_TRUE(EmptyClipboard());
}

} // namespace

TEST(Heap, ABlockThatGrowsALotIsMovedThreeTimesAtMost) {
    constexpr size_t Step = size_t{1} << 20;
    constexpr size_t Most = 200 * Step;
    auto* block = static_cast<uint8_t*>(Heap::Allocate(Step));
    int moves = 0;
    for (size_t size = Step; size < Most; size += Step) {
        ASSERT_TRUE(block);
        block[size - 1] = static_cast<uint8_t>(size / Step);
        auto* const grown = static_cast<uint8_t*>(Heap::Resize(block, size, size + Step));
        moves += grown != block;
        block = grown;
    }
    ASSERT_TRUE(block);
    EXPECT_LE(moves, 3);
    for (size_t size = Step; size < Most; size += Step) {
        ASSERT_EQ(block[size - 1], static_cast<uint8_t>(size / Step));
        ASSERT_EQ(block[size], 0);
    }
    Heap::Free(block);
}

TEST(WindowText, IsTakenWhole) {
    for (const std::u16string& text : {std::u16string(u"some text"), std::u16string(), std::u16string(5000, u'x')}) {
        const HiddenWindow window(text);
        WString out;
        ASSERT_TRUE(out.Assign(u"before"));
        ASSERT_TRUE(TextOfWindow(window.Get(), out));
        EXPECT_EQ(Content(out), text);
    }
}

TEST(WindowText, WithoutMemoryTheStringStaysAsItWas) {
    const HiddenWindow window(u"some text");
    const uint64_t failures = FailEachAllocation([&] {
        WString out;
        {
            const FailurePause pause;
            EXPECT_TRUE(out.Assign(u"before"));
        }
        const bool done = TextOfWindow(window.Get(), out);
        EXPECT_EQ(Content(out), done ? u"some text" : u"before");
        return done;
    });
    EXPECT_EQ(failures, 1u);
}

TEST(Platform, ClipboardHasTextOnlyForUnicodeText) {
    const HiddenWindow window(u"");
    EmptyTheClipboard(window.Get());
    EXPECT_FALSE(Platform::ClipboardHasText());
    {
        const OpenedClipboard clipboard(window.Get());
        ASSERT_TRUE(clipboard.IsOpen());
        GlobalBlock block(2 * sizeof(Char));
        {
            const GlobalAddress address(block.Get());
            ASSERT_NE(address.Get(), nullptr);
            std::memcpy(address.Get(), u"x", 2 * sizeof(Char));
        }
        ASSERT_TRUE(SetClipboardData(CF_UNICODETEXT, block.Get()));
        block.GiveAway();
    }
    EXPECT_TRUE(Platform::ClipboardHasText());
    EmptyTheClipboard(window.Get());
}

TEST(Guards, GiveBackWhatTheyTook) {
    const HiddenWindow window(u"");
    const DWORD before = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    for (int i = 0; i < 100; ++i) {
        const WindowDc screen(window.Get());
        const MemoryDc memory(screen.Get());
        const GdiObject bitmap(CreateCompatibleBitmap(screen.Get(), 8, 8));
        const SelectedObject selection(memory.Get(), bitmap.Get());
        EXPECT_EQ(GetCurrentObject(memory.Get(), OBJ_BITMAP), bitmap.Get());
    }
    EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), before);

    HANDLE copy = nullptr;
    {
        const KernelHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        ASSERT_TRUE(event.IsValid());
        copy = event.Get();
    }
    EXPECT_EQ(WaitForSingleObject(copy, 0), WAIT_FAILED);
    EXPECT_FALSE(KernelHandle(INVALID_HANDLE_VALUE).IsValid());
    EXPECT_FALSE(KernelHandle(nullptr).IsValid());
}

TEST(Guards, AHandleIsGivenBackWhenAnotherTakesItsPlace) {
    KernelHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const HANDLE first = event.Get();
    event.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    ASSERT_TRUE(event.IsValid());
    EXPECT_EQ(WaitForSingleObject(event.Get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
    if (first != event.Get()) {
        EXPECT_EQ(WaitForSingleObject(first, 0), WAIT_FAILED);
    }
    HANDLE kept = nullptr;
    {
        KernelHandle other(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        kept = other.Detach();
        EXPECT_FALSE(other.IsValid());
    }
    EXPECT_EQ(WaitForSingleObject(kept, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    event.Reset(kept);
    event.Reset(INVALID_HANDLE_VALUE);
    EXPECT_FALSE(event.IsValid());
}

TEST(Guards, AMenuAndAnAcceleratorTableAreDestroyed) {
    HMENU copy = nullptr;
    {
        const MenuHandle menu(CreatePopupMenu());
        ASSERT_TRUE(IsMenu(menu.Get()));
        copy = menu.Get();
    }
    EXPECT_FALSE(IsMenu(copy));

    ACCEL keys[1] = {{FVIRTKEY, VK_F5, 46000}};
    HACCEL table = nullptr;
    {
        const AcceleratorTable guard(CreateAcceleratorTableW(keys, 1));
        table = guard.Get();
        EXPECT_EQ(CopyAcceleratorTableW(table, nullptr, 0), 1);
    }
    EXPECT_EQ(CopyAcceleratorTableW(table, nullptr, 0), 0);
}

TEST(Guards, ALibraryIsUnloaded) {
    ASSERT_EQ(GetModuleHandleW(L"cabinet.dll"), nullptr);
    {
        const LoadedLibrary library(LoadLibraryW(L"cabinet.dll"));
        ASSERT_TRUE(library.IsValid());
        EXPECT_EQ(GetModuleHandleW(L"cabinet.dll"), library.Get());
    }
    EXPECT_EQ(GetModuleHandleW(L"cabinet.dll"), nullptr);
}

TEST(Guards, TheClipboardIsClosedUnlessItIsDetached) {
    const HiddenWindow window(u"");
    {
        const OpenedClipboard clipboard(window.Get());
        ASSERT_TRUE(clipboard.IsOpen());
        EXPECT_EQ(GetOpenClipboardWindow(), window.Get());
    }
    EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
    {
        OpenedClipboard clipboard(window.Get());
        ASSERT_TRUE(clipboard.IsOpen());
        clipboard.Detach();
    }
    EXPECT_EQ(GetOpenClipboardWindow(), window.Get());
    CloseClipboard();
}

TEST(Guards, TheMouseIsReleasedOnlyByItsOwner) {
    const HiddenWindow window(u"");
    const HiddenWindow other(u"");
    {
        MouseCapture capture;
        EXPECT_FALSE(capture.IsHeld());
        capture.Take(window.Get());
        EXPECT_TRUE(capture.IsHeld());
        EXPECT_EQ(GetCapture(), window.Get());
    }
    EXPECT_EQ(GetCapture(), nullptr);
    {
        MouseCapture capture;
        capture.Take(window.Get());
        SetCapture(other.Get());
        EXPECT_FALSE(capture.IsHeld());
    }
    EXPECT_EQ(GetCapture(), other.Get());
    ReleaseCapture();
}

TEST(Guards, ATimerTicksUntilItIsStopped) {
    const HiddenWindow window(u"");
    MSG message;
    const auto ticks = [&] {
        const ULONGLONG start = GetTickCount64();
        while (GetTickCount64() - start < 5000) {
            if (PeekMessageW(&message, window.Get(), WM_TIMER, WM_TIMER, PM_REMOVE)) return true;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_TIMER);
        }
        return false;
    };
    WindowTimer timer;
    ASSERT_TRUE(timer.Set(window.Get(), 7, 10));
    EXPECT_TRUE(ticks());
    EXPECT_EQ(message.wParam, 7u);
    timer.Stop();
    // The system refuses to stop a timer that is not set.
    EXPECT_FALSE(KillTimer(window.Get(), 7));
}

TEST(Guards, AWindowClassIsUnregistered) {
    WNDCLASSEXW definition = {};
    definition.cbSize = sizeof(definition);
    definition.lpfnWndProc = DefWindowProcW;
    definition.hInstance = GetModuleHandleW(nullptr);
    definition.lpszClassName = L"OrvaneGuardTest";
    WNDCLASSEXW found = {};
    found.cbSize = sizeof(found);
    {
        WindowClass registered;
        ASSERT_TRUE(registered.Register(definition));
        EXPECT_TRUE(GetClassInfoExW(definition.hInstance, definition.lpszClassName, &found));
        WindowClass second;
        EXPECT_FALSE(second.Register(definition));
    }
    EXPECT_FALSE(GetClassInfoExW(definition.hInstance, definition.lpszClassName, &found));
}

TEST(Guards, TheCaretIsDestroyed) {
    const HiddenWindow window(u"");
    const auto caretWindow = [] {
        GUITHREADINFO info = {};
        info.cbSize = sizeof(info);
        GetGUIThreadInfo(GetCurrentThreadId(), &info);
        return info.hwndCaret;
    };
    {
        WindowCaret caret;
        ASSERT_TRUE(caret.Create(window.Get(), 2, 16));
        EXPECT_TRUE(caret.IsCreated());
        EXPECT_FALSE(caret.IsShown());
        EXPECT_EQ(caretWindow(), window.Get());
        caret.Show();
        EXPECT_TRUE(caret.IsShown());
    }
    EXPECT_EQ(caretWindow(), nullptr);
}

TEST(Heap, LargeBlocksGrowInPlace) {
    constexpr size_t Size = size_t{8} << 20;
    void* block = Heap::Allocate(Size);
    ASSERT_NE(block, nullptr);
    void* const place = block;
    size_t size = Size;
    for (; size < 2 * Size - 4096; size += 1234) {
        block = Heap::Resize(block, size, size + 1234);
        ASSERT_EQ(block, place);
    }
    Heap::Free(block);
}

TEST(File, ACreatedFileIsNotShared) {
    wchar_t folder[MAX_PATH];
    wchar_t name[MAX_PATH];
    ASSERT_NE(GetTempPathW(MAX_PATH, folder), 0u);
    ASSERT_NE(GetTempFileNameW(folder, L"orv", 0, name), 0u);
    {
        Platform::File created;
        Platform::File other;
        ASSERT_TRUE(created.Open(FromWide(name), Platform::File::Mode::Create));
        EXPECT_FALSE(other.Open(FromWide(name), Platform::File::Mode::ReadShared));
        created.Close();
        EXPECT_TRUE(GetFileAttributesW(name) & FILE_ATTRIBUTE_ARCHIVE);
        // A reader lets others write and delete.
        ASSERT_TRUE(other.Open(FromWide(name), Platform::File::Mode::ReadShared));
        EXPECT_TRUE(created.Open(FromWide(name), Platform::File::Mode::ReadWrite));
    }
    EXPECT_TRUE(DeleteFileW(name));
}
