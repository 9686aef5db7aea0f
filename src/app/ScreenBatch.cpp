#include "app/ScreenBatch.h"

#include "base/Assert.h"

void ScreenBatch::Begin() {
    ++depth;
    SetRedraw(false);
}

bool ScreenBatch::End() {
    ORVANE_ASSERT(depth > 0);
    if (--depth > 0) return false;
    CatchUp();
    return true;
}

void ScreenBatch::LayOut() {
    layoutPending = true;
    if (depth == 0) LayOutNow();
}

void ScreenBatch::LayOutNow() {
    layoutPending = false;
    display.LayOutNow();
}

void ScreenBatch::RefreshTitle() {
    titlePending = depth > 0;
    if (!titlePending) display.RefreshTitleNow();
}

void ScreenBatch::RefreshStatus() {
    statusPending = depth > 0;
    if (!statusPending) display.RefreshStatusNow();
}

void ScreenBatch::CatchUp() {
    if (layoutPending) LayOutNow();
    if (titlePending) display.RefreshTitleNow();
    if (statusPending) display.RefreshStatusNow();
    titlePending = statusPending = false;
    SetRedraw(true);
}

void ScreenBatch::SetRedraw(bool on) {
    if (drawing == on) return;
    drawing = on;
    display.SetRedraw(on);
}
