#pragma once

#include "base/WString.h"
#include "viewbase/EditorInput.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

// A frame that only records what a view reports to it.
class FakeHost final : public ViewHost {
public:
    void ViewActivated(View*) override { ++activations; }
    void SetStatusText(StatusField field, const Char* text) override {
        status[field] = text ? text : u"";
        ++statusCalls[field];
    }
    bool OpenFileAtLine(const Char* path, uint32_t line) override {
        opened.emplace_back(path, line);
        return true;
    }
    void DocumentChanged(Document*) override { ++documentChanges; }
    void CheckChangedOnDisk(Document*, bool running) override { runStates.push_back(running); }
    Answer ShowMessage(NativeWindow, const Char* text, MessageKind kind) override {
        messages.emplace_back(text);
        messageKinds.push_back(kind);
        return Answer::Ok;
    }
    MacroState GetMacroState() override { return macroState; }
    void StopMacroPlayback() override { ++macroStops; }
    void ApplySettings(SettingsEffect kind) override { applied.push_back(kind); }
    void BeginLongOperation() override { ++longOperations; }
    void EndLongOperation() override { --longOperations; }
    bool UseOle() override { return useOle(); }

    std::map<StatusField, std::u16string> status; // what the fields show
    std::map<StatusField, int> statusCalls;
    std::vector<std::pair<std::u16string, uint32_t>> opened;
    std::vector<std::u16string> messages;
    std::vector<MessageKind> messageKinds;
    std::vector<SettingsEffect> applied;
    std::vector<bool> runStates;
    MacroState macroState = MacroState::Idle;
    int macroStops = 0;
    int documentChanges = 0;
    int activations = 0;
    int longOperations = 0; // that run
    std::function<bool()> useOle = [] { return false; };
};

// A window without a screen. The font is 8 pixels wide and 16 high unless a test says otherwise.
class FakeSurface : public EditorSurface {
public:
    FakeSurface() { SetFont({16, 8, 8}); }

    void SetFont(const ViewMetrics& font) { metrics = font; }
    // In lines and columns of the fixed font, beside gutter and margin.
    void SetSize(int32_t newWidth, int32_t newHeight) {
        width = newWidth;
        height = newHeight;
    }
    void ForgetCalls() {
        allInvalidations = 0;
        strips.clear();
        barsSet.clear();
    }

    bool HasWindow() const override { return window; }
    bool HasFocus() const override { return window && focus; }
    void TakeFocus() override {
        if (focus || !editor) return;
        focus = true;
        editor->OnFocus();
    }
    ClientSize Size() const override { return window ? ClientSize{width, height} : ClientSize(); }
    const ViewMetrics& Metrics() const override { return metrics; }
    void InvalidateAll() override { ++allInvalidations; }
    void InvalidateStrip(int32_t top, int32_t bottom) override { strips.emplace_back(top, bottom); }
    void ShowCaretAt(ClientPoint point) override {
        caretShown = true;
        caretX = point.x;
        caretY = point.y;
    }
    void RenewCaret() override { ++renewals; }
    void SetScrollBar(ScrollAxis axis, const ScrollBar& bar) override {
        bars[static_cast<uint32_t>(axis)] = bar;
        barsSet.push_back(axis);
    }
    bool IsCtrlDown() const override { return ctrl; }
    bool IsShiftDown() const override { return shift; }
    bool IsAltDown() const override { return alt; }
    void BeginDrag() override { captured = true; }
    void EndDrag() override {
        if (!captured) return;
        captured = false;
        if (editor) editor->Drag().OnCaptureLost();
    }
    bool ReadClipboard(WString& text, bool& wholeLine) override {
        if (!clipboardHasText) return false;
        wholeLine = clipboardWholeLine;
        return text.Assign(clipboard.data(), static_cast<int64_t>(clipboard.size()));
    }
    void WriteClipboard(const ClipboardItem* items, uint32_t count) override {
        written.clear();
        for (uint32_t i = 0; i < count; ++i) {
            const auto* bytes = static_cast<const char*>(items[i].data);
            written.emplace_back(items[i].format, std::string(bytes, items[i].bytes));
        }
        clipboardHasText = clipboardWholeLine = false;
        for (uint32_t i = 0; i < count; ++i) {
            if (items[i].format == ClipboardFormat::WholeLine) clipboardWholeLine = true;
            if (items[i].format != ClipboardFormat::UnicodeText) continue;
            clipboardHasText = true;
            clipboard.assign(static_cast<const Char*>(items[i].data), items[i].bytes / sizeof(Char) - 1);
        }
    }
    void ShowFindDialog() override { dialogs.emplace_back("find"); }
    void ShowGoToDialog() override { dialogs.emplace_back("go to"); }
    uint64_t Ticks() const override { return ticks += tickStep; }
    void SetWaitCursor(bool wait) override {
        waiting = wait;
        everWaited = everWaited || wait;
    }
    bool TakeEscape() override { return std::exchange(escapePressed, false); }
    ViewHost* Host() const override { return host; }
    View* AsView() override { return nullptr; }
    void DestroyView() override { destroy(); }

    // What a test looks at or sets up.
    FakeHost ownHost;
    ViewHost* host = &ownHost;
    EditorInput* editor = nullptr;
    bool window = true;
    bool focus = false;
    bool ctrl = false;
    bool shift = false;
    bool alt = false;
    int32_t width = 0;
    int32_t height = 0;
    ViewMetrics metrics;
    bool caretShown = false;
    int32_t caretX = 0;
    int32_t caretY = 0;
    int renewals = 0;
    ScrollBar bars[2];
    std::vector<ScrollAxis> barsSet;
    int allInvalidations = 0;
    std::vector<std::pair<int32_t, int32_t>> strips;
    bool captured = false;
    bool clipboardHasText = false;
    bool clipboardWholeLine = false;
    std::u16string clipboard;
    std::vector<std::pair<ClipboardFormat, std::string>> written;
    std::vector<std::string> dialogs;
    mutable uint64_t ticks = 0;
    uint64_t tickStep = 0; // how much later each look at the clock is
    bool waiting = false;
    bool everWaited = false;
    bool escapePressed = false;
    std::function<void()> destroy = [] {};
};
