#pragma once

#include "view/EditorSurface.h"
#include "view/RowPlan.h"
#include "view/TextEditor.h"
#include "view/win32/View.h"

// The window half of a text view: routes messages to the TextEditor, which decides everything, and
// plays its answers onto the screen. Destroyed with DestroyView, after which its document forgot it.
class TextView final : public View, public EditorSurface {
public:
    TextView() = default;
    ~TextView() override;

    // A view of `document` in a window inside `parent`, or without a window when that is null. Null on
    // failure. Installed as the document's view factory.
    static DocumentView* Create(TextBuffer& document, NativeWindow parent);

    TextEditor& Editor() { return editor; }

    // Draws the rows that the client pixels [top, bottom) touch, all rows when that is empty.
    void PaintRows(HDC target, int top, int bottom);

    // View.
    Document* Attach(HWND newWindow) override;
    Document* GetDocument() const override { return editor.GetTextBuffer(); }
    void GoToLine(uint32_t line, bool selectLine) override { editor.GoToLine(line, selectLine); }
    bool IsCommandEnabled(uint32_t command) const override { return editor.IsCommandEnabled(command); }
    bool ExecuteCommand(uint32_t command) override { return editor.ExecuteCommand(command); }
    void OnSize(uint32_t flags) override;
    void SuspendRedraw(bool resume) override { editor.SuspendRedraw(resume); }
    void Invalidate() override { editor.Invalidate(); }
    void ToggleBookmark(uint32_t line) override { editor.ToggleBookmark(line); }
    bool FindNext(bool backward, uint32_t) override { return editor.FindNext(backward); }
    LRESULT WindowProc(UINT message, WPARAM wparam, LPARAM lparam) override;
    void OnKeyDown(uint32_t key, uint32_t repeat, uint32_t flags) override;
    void OnChar(Char character, uint32_t repeat, uint32_t flags) override;

    // EditorSurface.
    bool HasWindow() const override { return window != nullptr; }
    bool HasFocus() const override { return focused; }
    void TakeFocus() override;
    void GetClientSize(int32_t& width, int32_t& height) const override;
    const ViewMetrics& Metrics() const override;
    CharWidths& Widths() override;
    void InvalidateAll() override;
    void InvalidateStrip(int32_t top, int32_t bottom) override;
    void ScrollPicture(int32_t pixels) override;
    void UpdateNow() override;
    void ShowCaretAt(int32_t x, int32_t y) override;
    void HideCaret() override { View::HideCaret(); }
    void RenewCaret() override;
    void SetScrollBar(ScrollAxis axis, const ScrollBar& bar) override;
    bool IsCtrlDown() const override { return GetKeyState(VK_CONTROL) < 0; }
    bool IsShiftDown() const override { return GetKeyState(VK_SHIFT) < 0; }
    void BeginDrag() override;
    void EndDrag() override;
    bool ReadClipboard(WString& text, bool& wholeLine) override;
    void WriteClipboard(const ClipboardItem* items, uint32_t count) override;
    void ShowFindDialog() override;
    void ShowReplaceDialog(bool multiLineSelection) override;
    void ShowGoToDialog() override;
    void ShowContextMenu(int32_t x, int32_t y) override;
    uint64_t Ticks() const override;
    void SetWaitCursor(bool wait) override;
    bool TakeEscape() override;
    ViewHost* Host() const override { return host; }
    View* AsView() override { return this; }
    void DestroyView() override;

private:
    bool HandleMouse(UINT message, WPARAM wparam, LPARAM lparam);
    void OnPaint();
    void OnWheel(WPARAM wparam);
    void OnScrollMessage(ScrollAxis axis, WORD code);
    void PlaceComposition();

    TextEditor editor{*this};
    RowPlan plan;
};
