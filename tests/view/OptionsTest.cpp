#include "view/OptionsTest.h"

// The program is linked so that the change handlers of the settings come to the first of these.
bool RecordOrRebuild(DrawingResource change) asm("__wrap__Z14RebuildDrawing15DrawingResource");
bool ReallyRebuild(DrawingResource change) asm("__real__Z14RebuildDrawing15DrawingResource");

namespace {

bool records = false; // instead of making drawing objects

} // namespace

bool RecordOrRebuild(DrawingResource change) {
    if (!records) return ReallyRebuild(change);
    OptionsTest::handled.push_back(change);
    return true;
}

OptionsTest::OptionsTest() {
    records = true;
    LoadSettings(file);
    handled.clear();
}

OptionsTest::~OptionsTest() {
    records = false;
    ReleaseSettings();
}

HWND OptionsTest::PageWith(HWND options, int control) {
    for (HWND child = GetWindow(options, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (GetDlgItem(child, control)) return child;
    return nullptr;
}

HTREEITEM OptionsTest::Related(HWND tree, UINT relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

HTREEITEM OptionsTest::TreeItem(HWND options, int page) {
    const HWND tree = GetDlgItem(options, IDC_OPTIONS_TREE);
    HTREEITEM item = Related(tree, TVGN_CHILD, Related(tree, TVGN_ROOT, nullptr));
    for (int i = 0; i < page; ++i) item = Related(tree, TVGN_NEXT, item);
    return item;
}

void OptionsTest::ShowPage(HWND options, int page) {
    SendDlgItemMessageW(options, IDC_OPTIONS_TREE, TVM_SELECTITEM, TVGN_CARET,
                        reinterpret_cast<LPARAM>(TreeItem(options, page)));
}

int OptionsTest::ShownPage(HWND options) {
    const HWND pages[] = {GeneralPage(options), FontsPage(options), ColorsPage(options)};
    int shown = -1;
    for (int i = 0; i < 3; ++i) {
        if (!IsWindowVisible(pages[i])) continue;
        if (shown != -1) return -1;
        shown = i;
    }
    return shown;
}

void OptionsTest::Choose(HWND chooser, Colour colour) {
    constexpr int Red = 706;
    for (int part = 0; part < 3; ++part) SetDlgItemInt(chooser, Red + part, colour >> (part * 8) & 0xFF, FALSE);
    dialog::Ok(chooser);
}
