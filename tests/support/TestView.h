#pragma once

#include "support/FakeSurface.h"
#include "support/TestServices.h"
#include "view/TextInput.h"

// What a text view also asks of its window. Every character is as wide as the average one unless a test says
// otherwise.
class FakeTextSurface final : public FakeSurface, public TextSurface {
public:
    FakeTextSurface() { SetFont({16, 8, 8}); }

    // Every character is as wide as the average one, a pair of surrogates as two, but for those in `special`.
    void SetFont(const ViewMetrics& font, std::map<uint32_t, int32_t> special = {}) {
        FakeSurface::SetFont(font);
        specialWidths = std::move(special);
        widths.SetSource(
            [](void* context, uint32_t first, int32_t* out) {
                const auto& surface = *static_cast<FakeTextSurface*>(context);
                ++surface.widthFetches;
                for (uint32_t i = 0; i < CharWidths::PageSize; ++i) {
                    const auto found = surface.specialWidths.find(first + i);
                    const int32_t usual = surface.metrics.averageWidth * (first > 0xFFFF ? 2 : 1);
                    out[i] = found == surface.specialWidths.end() ? usual : found->second;
                }
                if (first == 0 && !surface.specialWidths.count(u' ')) out[u' '] = surface.metrics.spaceWidth;
                return true;
            },
            this);
    }
    void ForgetCalls() {
        FakeSurface::ForgetCalls();
        updates = 0;
        scrolls.clear();
    }

    CharWidths& Widths() override { return widths; }
    void ScrollPicture(int32_t pixels) override { scrolls.push_back(pixels); }
    void UpdateNow() override { ++updates; }
    void HideCaret() override { caretShown = false; }
    void ShowReplaceDialog(bool multiLine) override { dialogs.emplace_back(multiLine ? "replace many" : "replace"); }

    std::map<uint32_t, int32_t> specialWidths;
    mutable int widthFetches = 0;
    int updates = 0;
    std::vector<int32_t> scrolls;

private:
    CharWidths widths;
};

// A window and its editor, as a document makes and destroys them.
struct TestView {
    FakeTextSurface surface;
    TextEditor editor{surface, surface};
    TextInput input{editor};

    TestView() {
        surface.editor = &input;
        surface.destroy = [this] { delete this; };
    }
    ~TestView() {
        surface.editor = nullptr;
        editor.SetDocument(nullptr);
    }
    // In the document's list of views, which owns it.
    static TestView* Create(TextBuffer& document) {
        static TestView* made;
        textServices.makeView = [](TextBuffer& shown, NativeWindow) -> TextDocumentView* {
            made = new TestView;
            made->editor.SetDocument(&shown);
            return &made->editor;
        };
        return document.CreateView(nullptr) ? made : nullptr;
    }
};
