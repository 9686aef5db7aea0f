#pragma once

// Suspends the redraw of a view, or of all that a stage for macros has, while it lives.
template <class Suspended> class SuspendedRedraw {
public:
    explicit SuspendedRedraw(Suspended& shown) : suspended(shown) { suspended.SuspendRedraw(); }
    ~SuspendedRedraw() { suspended.ResumeRedraw(); }
    SuspendedRedraw(const SuspendedRedraw&) = delete;
    SuspendedRedraw& operator=(const SuspendedRedraw&) = delete;

private:
    Suspended& suspended;
};
