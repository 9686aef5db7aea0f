// What painting costs, against bare text-outs of the same rows with given advances; a typed character against a bare
// window that moves its caret and draws the line.
#include "../tests/support/TestServices.h"
#include "Ratio.h"
#include "base/win32/Windows.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "settings/win32/DrawingObjects.h"
#include "syntax/EngineDefinition.h"
#include "view/win32/TextView.h"
#include "viewbase/win32/ViewFont.h"

#include <string>

namespace {

constexpr int Rows = 60;
constexpr int Columns = 120;
constexpr int RunsPerRow = 8;
constexpr int RunLength = Columns / RunsPerRow;
constexpr int Repeats = 20; // of what is too short to be timed alone

// 120 characters of C++ in 8 runs of two colours, each 15 characters long.
std::u16string SampleRow() {
    std::u16string row;
    for (int run = 0; run < RunsPerRow; ++run) row += run % 2 ? u"\"13 characters\"" : u"123456789012345";
    return row;
}

class Stage {
public:
    Stage() {
        const HINSTANCE instance = GetModuleHandleW(nullptr);
        Bench::Check(views.Register(instance), "the window class");
        std::u16string text = u"[General]\nFontName=Courier New\n";
        IniFile file;
        static_cast<void>(file.Parse(text.data()));
        LoadSettings(file);
        LoadEngineDefinitions(file);
        textServices.makeView = TextView::Create;
        const int width = 7 * DrawingObjects::AverageWidth() + 20 + Columns * DrawingObjects::AverageWidth() + 20;
        const int height = Rows * DrawingObjects::LineHeight() + 20;
        frame = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, width, height, nullptr,
                                nullptr, instance, nullptr);
        document = new TextBuffer(textServices);
        document->AddRef();
        static_cast<void>(document->MakeNew(u"C:\\bench.cpp"));
        std::u16string content;
        for (int line = 0; line < 10 * Rows; ++line) content += SampleRow() + u"\n";
        Bench::Check(document->InsertText(0, content.data(), static_cast<uint32_t>(content.size())), "the text");
        DocumentView* made = document->CreateView(frame);
        Bench::Check(made != nullptr, "the view");
        view = static_cast<TextView*>(made->AsView());
        SetForegroundWindow(frame);
        SetFocus(view->GetWindow());
        UpdateWindow(view->GetWindow());
    }

    void PaintAll() {
        InvalidateRect(view->GetWindow(), nullptr, TRUE);
        UpdateWindow(view->GetWindow());
        GdiFlush();
    }

    // What happens inside WM_PAINT, without the system's round of invalidating around it.
    void PaintRows(int top, int bottom) {
        const HDC dc = GetDC(view->GetWindow());
        view->PaintRows(dc, top, bottom);
        ReleaseDC(view->GetWindow(), dc);
        GdiFlush();
    }

    // One row as a bare loop would draw it.
    void DrawBareRow(HDC dc, const std::u16string& row, int y) const {
        const int advance = DrawingObjects::AverageWidth();
        INT advances[Columns];
        for (INT& width : advances) width = advance;
        for (int run = 0; run < RunsPerRow; ++run) {
            const int x = run * RunLength * advance;
            const RECT area = {x, y, x + RunLength * advance, y + DrawingObjects::LineHeight()};
            SetTextColor(dc, run % 2 ? settings.StringFg : settings.NumberFg);
            SetBkColor(dc, settings.TextBg);
            ExtTextOutW(dc, x, y, ETO_OPAQUE | ETO_CLIPPED, &area,
                        reinterpret_cast<const wchar_t*>(row.data()) + run * RunLength, RunLength, advances);
        }
    }

    void DrawBare(int rows) const {
        const std::u16string row = SampleRow();
        const HDC dc = GetDC(view->GetWindow());
        const HGDIOBJ old = SelectObject(dc, DrawingObjects::EditorFont());
        for (int line = 0; line < rows; ++line) DrawBareRow(dc, row, line * DrawingObjects::LineHeight());
        SelectObject(dc, old);
        ReleaseDC(view->GetWindow(), dc);
        GdiFlush();
    }

    ViewClass views;
    HWND frame;
    TextBuffer* document;
    TextView* view;
};

// A window that draws its rows bare: what the system's own round of moving a caret, invalidating and
// painting costs.
class BareWindow {
public:
    explicit BareWindow(const Stage& stage) : model(stage) {
        WNDCLASSW definition = {};
        definition.lpfnWndProc = Procedure;
        definition.hInstance = GetModuleHandleW(nullptr);
        definition.lpszClassName = L"BareWindow";
        RegisterClassW(&definition);
        RECT area = {};
        GetClientRect(stage.view->GetWindow(), &area);
        window = CreateWindowExW(WS_EX_TOPMOST, L"BareWindow", L"", WS_POPUP | WS_VISIBLE, 0, 0, area.right,
                                 area.bottom, nullptr, nullptr, definition.hInstance, nullptr);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        UpdateWindow(window);
    }
    ~BareWindow() { DestroyWindow(window); }

    void TakeFocus() const {
        SetForegroundWindow(window);
        SetFocus(window);
    }
    void TypeAndPaint() {
        const int top = Rows / 2 * DrawingObjects::LineHeight();
        caretColumn = (caretColumn + 1) % Columns;
        SetCaretPos(caretColumn * DrawingObjects::AverageWidth(), top);
        const RECT strip = {0, top, 10000, top + DrawingObjects::LineHeight()};
        InvalidateRect(window, &strip, TRUE);
        UpdateWindow(window);
        GdiFlush();
    }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
        if (message == WM_ERASEBKGND) return 1;
        if (message == WM_KILLFOCUS) DestroyCaret();
        if (message == WM_SETFOCUS && CreateCaret(window, nullptr, 2, DrawingObjects::LineHeight())) ShowCaret(window);
        auto* self = reinterpret_cast<BareWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message != WM_PAINT || !self) return DefWindowProcW(window, message, wparam, lparam);
        PAINTSTRUCT paint = {};
        const HDC dc = BeginPaint(window, &paint);
        const HGDIOBJ old = SelectObject(dc, DrawingObjects::EditorFont());
        self->model.DrawBareRow(dc, self->row, paint.rcPaint.top);
        SelectObject(dc, old);
        EndPaint(window, &paint);
        return 0;
    }

    const Stage& model;
    std::u16string row = SampleRow();
    HWND window = nullptr;
    int caretColumn = 0;
};

} // namespace

int main() {
    Stage stage;
    Bench::Check(stage.view->Editor().VisibleLines() >= Rows, "60 rows in the window");
    stage.PaintAll();
    const int top = Rows / 2 * DrawingObjects::LineHeight();
    const int bottom = top + DrawingObjects::LineHeight();
    const auto repeat = [](auto action) {
        return [action] {
            for (int i = 0; i < Repeats; ++i) action();
        };
    };
    const auto paintAll = repeat([&] { stage.PaintRows(0, 0); });
    const auto paintStrip = repeat([&] { stage.PaintRows(top, bottom); });
    const auto drawAll = repeat([&] { stage.DrawBare(Rows); });
    Bench::Compare("full repaint inside WM_PAINT / bare rows", paintAll, drawAll, 2.0, 9);
    Bench::Compare("one-line repaint / full repaint", paintStrip, paintAll, 1.0 / 20, 9);

    // From the message to the painted strip, against a window that only moves its caret and draws the line.
    BareWindow bare(stage);
    const auto type = repeat([&] {
        SendMessageW(stage.view->GetWindow(), WM_CHAR, L'x', 1);
        stage.view->UpdateNow();
        GdiFlush();
    });
    const auto typeBare = repeat([&] { bare.TypeAndPaint(); });
    const auto focusView = [&] {
        SetForegroundWindow(stage.frame);
        SetFocus(stage.view->GetWindow());
        // Typing on to the right edge would scroll.
        stage.view->Editor().MoveCaret({Rows / 2, 40}, false);
        stage.view->UpdateNow();
    };
    Bench::Compare("typed character to strip / bare window's line", {type, focusView},
                   {typeBare, [&] { bare.TakeFocus(); }}, 3.0, 15);
    return Bench::ExitStatus();
}
