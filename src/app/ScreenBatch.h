#pragma once

#include "base/Types.h"

// What the frame's window shows around its panes, done at once.
class FrameDisplay {
public:
    virtual void LayOutNow() = 0;
    virtual void RefreshTitleNow() = 0;
    virtual void RefreshStatusNow() = 0; // the message field
    // Empties all status fields: no view is left that fills them.
    virtual void ClearStatusFields() = 0;
    // Whether the panes and the status bar draw anything; on again they draw it all.
    virtual void SetRedraw(bool on) = 0;

protected:
    ~FrameDisplay() = default;
};

// Runs of opens and commands, which nest: what only the screen needs is done once, at the end of the
// outermost. Laying out and drawing for each of many files would take ten times as long as opening them.
class ScreenBatch {
public:
    explicit ScreenBatch(FrameDisplay& target) : display(target) {}
    ScreenBatch(const ScreenBatch&) = delete;
    ScreenBatch& operator=(const ScreenBatch&) = delete;

    void Begin();
    // True at the end of the outermost.
    bool End();
    bool IsOpen() const { return depth > 0; }

    // Now, or at the end of the batch.
    void LayOut();
    void RefreshTitle();
    void RefreshStatus();
    // Also in the middle of a batch.
    void LayOutNow();
    void ClearStatusFields() { display.ClearStatusFields(); }

    // Around a question: the screen shows all that waits and draws, until ResumeBatch.
    void CatchUp();
    void ResumeBatch() { SetRedraw(depth == 0); }

private:
    void SetRedraw(bool on);

    FrameDisplay& display;
    uint32_t depth = 0;
    bool layoutPending = false;
    bool titlePending = false;
    bool statusPending = false;
    bool drawing = true;
};
