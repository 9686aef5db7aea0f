#pragma once

#include "../tests/support/TestServices.h"
#include "base/WString.h"
#include "view/RowPlan.h"
#include "view/TextInput.h"
#include "viewbase/EditorSurface.h"

namespace Bench {

// A window that shows nothing: 60 lines of 120 columns in a font of 8 by 16 pixels, with the focus.
class Surface final : public EditorSurface, public TextSurface {
public:
    static constexpr int32_t Rows = 60;
    static constexpr int32_t Columns = 120;

    Surface() {
        widths.SetSource(
            [](void*, uint32_t, int32_t* out) {
                for (uint32_t i = 0; i < CharWidths::PageSize; ++i) out[i] = 8;
                return true;
            },
            nullptr);
    }

    bool HasWindow() const override { return true; }
    bool HasFocus() const override { return true; }
    void TakeFocus() override {}
    ClientSize Size() const override { return {Columns * metrics.averageWidth, Rows * metrics.lineHeight}; }
    const ViewMetrics& Metrics() const override { return metrics; }
    CharWidths& Widths() override { return widths; }
    void InvalidateAll() override { ++invalidations; }
    void InvalidateStrip(int32_t, int32_t) override { ++strips; }
    void ScrollPicture(int32_t) override { ++strips; }
    void UpdateNow() override {}
    void ShowCaretAt(ClientPoint) override {}
    void HideCaret() override {}
    void RenewCaret() override {}
    void SetScrollBar(ScrollAxis, const ScrollBar&) override {}
    bool IsCtrlDown() const override { return ctrl; }
    bool IsShiftDown() const override { return shift; }
    bool IsAltDown() const override { return false; }
    void BeginDrag() override {}
    void EndDrag() override {}
    bool ReadClipboard(WString& text, bool& wholeLine) override {
        wholeLine = false;
        return clipboard && text.Assign(clipboard, clipboardLength);
    }
    void WriteClipboard(const ClipboardItem*, uint32_t) override {}
    void ShowFindDialog() override {}
    void ShowReplaceDialog(bool) override {}
    void ShowGoToDialog() override {}
    uint64_t Ticks() const override { return 0; }
    void SetWaitCursor(bool) override {}
    bool TakeEscape() override { return false; }
    ViewHost* Host() const override { return nullptr; }
    View* AsView() override { return nullptr; }
    void DestroyView() override {}

    bool ctrl = false;
    bool shift = false;
    const Char* clipboard = nullptr;
    int64_t clipboardLength = 0;
    int invalidations = 0;
    int strips = 0;

private:
    ViewMetrics metrics = {16, 8, 8};
    CharWidths widths;
};

// A view of a document, in its list of views as long as this lives.
class ShownDocument {
public:
    explicit ShownDocument(TextBuffer& document) {
        static ShownDocument* made;
        made = this;
        textServices.makeView = [](TextBuffer&, NativeWindow) -> TextDocumentView* { return &made->editor; };
        editor.SetDocument(&document);
        document.CreateView(nullptr);
        input.OnSize(false);
        input.OnAttached();
        input.OnFocus();
    }
    ~ShownDocument() { editor.SetDocument(nullptr); }

    void Press(uint32_t key, bool ctrl = false) {
        surface.ctrl = ctrl;
        input.OnKeyDown(key);
        surface.ctrl = false;
    }

    Surface surface;
    TextEditor editor{surface, surface};
    TextInput input{editor};
};

// All rows in [top, bottom) of the window, or all; how many characters are drawn.
inline uint64_t PaintRows(TextEditor& editor, RowPlan& plan, int32_t top = 0, int32_t bottom = 0) {
    uint64_t drawn = 0;
    if (!plan.Begin(editor, top, bottom)) return 0;
    RowPicture row;
    while (plan.Next(row)) {
        for (uint32_t i = 0; i < row.runCount; ++i) drawn += row.runs[i].count;
    }
    return drawn;
}

} // namespace Bench
