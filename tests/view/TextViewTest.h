#pragma once

#include "base/win32/Windows.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "settings/win32/DrawingObjects.h"
#include "support/TestServices.h"
#include "support/TextDocument.h"
#include "syntax/EngineDefinition.h"
#include "view/win32/TextView.h"
#include "viewbase/win32/ViewFont.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

// What a window shows, read back pixel by pixel.
class Picture {
public:
    explicit Picture(HWND window) {
        RECT client = {};
        GetClientRect(window, &client);
        width = client.right;
        height = client.bottom;
        pixels.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        const HDC source = GetDC(window);
        const HDC memory = CreateCompatibleDC(source);
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        const HGDIOBJ old = SelectObject(memory, bitmap);
        BitBlt(memory, 0, 0, width, height, source, 0, 0, SRCCOPY);
        GdiFlush();
        memcpy(pixels.data(), bits, pixels.size() * 4);
        SelectObject(memory, old);
        DeleteObject(bitmap);
        DeleteDC(memory);
        ReleaseDC(window, source);
    }

    Colour At(int x, int y) const {
        const uint32_t pixel = pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
        return Rgb(pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255);
    }
    // How many pixels of [left, right) x [top, bottom) have the colour.
    int Count(Colour colour, int left, int top, int right, int bottom) const {
        int count = 0;
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x) count += At(x, y) == colour;
        return count;
    }
    bool Has(Colour colour, int left, int top, int right, int bottom) const {
        return Count(colour, left, top, right, bottom) > 0;
    }
    bool IsAll(Colour colour, int left, int top, int right, int bottom) const {
        return Count(colour, left, top, right, bottom) == (right - left) * (bottom - top);
    }
    bool operator==(const Picture& other) const { return width == other.width && pixels == other.pixels; }

    int width = 0;
    int height = 0;

private:
    std::vector<uint32_t> pixels;
};

// A text view in a real window, with settings of the test's own.
class TextViewTest : public ::testing::Test {
protected:
    static constexpr int WindowWidth = 640;
    static constexpr int WindowHeight = 320;

    void SetUp() override {
        Application();
        DrawingObjects::RebuildForDpi(96);
        UseSettings(u"");
        textServices.makeView = TextView::Create;
        frame = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, WindowWidth, WindowHeight,
                                nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(frame, nullptr);
    }
    void TearDown() override {
        document.reset();
        DestroyWindow(frame);
        ReleaseEngineDefinitions();
        ViewFont::Release();
        DrawingObjects::Release();
        ReleaseSettings();
    }

    // Makes the settings those of a file with these lines in its General section.
    void UseSettings(const std::u16string& lines) {
        ReleaseEngineDefinitions();
        std::u16string text = u"[General]\nFontName=Courier New\nFontSize=10\n" + lines + u"\n";
        IniFile file;
        ASSERT_TRUE(file.Parse(text.data()));
        LoadSettings(file);
        LoadEngineDefinitions(file);
        if (document) {
            (*document)->OnSettingsChanged(SettingsEffect::Engine);
            view->OnSize(SettingsEffect::Engine);
            view->Invalidate();
        }
    }
    void Show(const std::u16string& text, const Char* engine = nullptr) {
        document = std::make_unique<TextDocument>(text);
        if (engine) static_cast<void>((*document)->SetEngineName(engine));
        DocumentView* made = (*document)->CreateView(frame);
        ASSERT_NE(made, nullptr);
        view = static_cast<TextView*>(made->AsView());
        view->SetHost(nullptr);
    }
    Picture Paint() {
        // Without a caret, which would be in the picture.
        view->HideCaret();
        InvalidateRect(view->GetWindow(), nullptr, TRUE);
        UpdateWindow(view->GetWindow());
        return Picture(view->GetWindow());
    }

    void FocusView() const {
        SetForegroundWindow(frame);
        SetFocus(Window());
        ASSERT_EQ(GetFocus(), Window());
    }

    HWND Window() const { return view->GetWindow(); }
    TextEditor& Editor() const { return view->Editor(); }
    int LineHeight() const { return DrawingObjects::LineHeight(); }
    int Average() const { return DrawingObjects::AverageWidth(); }
    int Gutter() const { return Editor().Viewport().GutterWidth(); }
    int TextLeft() const { return Editor().Viewport().TextLeft(); }
    // Where a column of a line without tabs starts in the window (fixed-pitch font).
    int ColumnX(int column) const { return TextLeft() + column * Average(); }

    HWND frame = nullptr;
    std::unique_ptr<TextDocument> document;
    TextView* view = nullptr;

private:
    static void Application() {
        static ViewClass views;
        static const bool registered = views.Register(GetModuleHandleW(nullptr));
        ASSERT_TRUE(registered);
    }
};
