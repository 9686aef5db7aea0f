#pragma once

#include "view/TextEditor.h"

// Suspends the redraw of a text view while it lives.
class SuspendedRedraw {
public:
    explicit SuspendedRedraw(TextEditor& suspended) : editor(suspended) { editor.SuspendRedraw(); }
    ~SuspendedRedraw() { editor.ResumeRedraw(); }
    SuspendedRedraw(const SuspendedRedraw&) = delete;
    SuspendedRedraw& operator=(const SuspendedRedraw&) = delete;

private:
    TextEditor& editor;
};
