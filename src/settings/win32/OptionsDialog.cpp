#include "settings/win32/OptionsDialog.h"

#include "resource.h"
#include "settings/IniFile.h"
#include "settings/SystemColours.h"
#include "settings/win32/OptionsPages.h"

namespace {

constexpr int PageCount = 3;
constexpr int PageLeft = 170; // pixels at USER_DEFAULT_SCREEN_DPI

class OptionsDialog final : public DialogBase {
public:
    explicit OptionsDialog(uint32_t& page) : shownPage(page) {}

    void Init() override {
        MakePages();
        MakeTree();
        CentreOverParent();
    }

    bool Message(UINT message, WPARAM wparam, LPARAM lparam) override {
        if (message == WM_NOTIFY) {
            const auto& notice = *reinterpret_cast<const NMTREEVIEWW*>(lparam);
            if (notice.hdr.code == TVN_SELCHANGEDW && notice.hdr.hwndFrom == tree)
                ShowPage(static_cast<uint32_t>(notice.itemNew.lParam));
        }
        // A tree on its way out may select one item after the other as they go.
        if (message == WM_DESTROY) tree = nullptr;
        return DialogBase::Message(message, wparam, lparam);
    }

    // Enter on a button of a page comes to the dialog, not to the page.
    void Command(uint32_t identifier) override {
        if (identifier == IDOK || identifier == IDCANCEL)
            DialogBase::Command(identifier);
        else
            pages[shownPage]->Command(identifier);
    }

    void Ok() override {
        for (OptionsPage* page : pages)
            if (page->Window()) page->Apply();
        DialogBase::Ok();
    }

    const SettingsRecord& Copy() const { return copy; }

private:
    void MakePages() {
        static constexpr uint16_t Resources[PageCount] = {IDD_OPTIONS_GENERAL, IDD_OPTIONS_FONTS, IDD_OPTIONS_COLORS};
        const int dpi = static_cast<int>(GetDpiForWindow(window));
        RECT area = {MulDiv(PageLeft, dpi, USER_DEFAULT_SCREEN_DPI), 0, 0, 0};
        for (int i = 0; i < PageCount; ++i) {
            const HWND made = pages[i]->CreatePage(Resources[i], window);
            if (!made) continue;
            // After the tree, before the buttons: the order of the windows is the order of the Tab key.
            SetWindowPos(made, GetDlgItem(window, IDC_OPTIONS_TREE), area.left, area.top, 0, 0, SWP_NOSIZE);
            GetWindowRect(made, &area);
            MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
        }
        if (area.right) FitToPages(area.left, area.right);
    }

    // The pages are at a place in pixels, everything else is in units of the dialog's font, and how many pixels
    // those are differs from font to font: the tree has to end where the pages begin, and the dialog where they end.
    void FitToPages(int left, int right) {
        RECT client = {};
        RECT outer = {};
        GetClientRect(window, &client);
        GetWindowRect(window, &outer);
        const int wider = right - client.right;
        SetWindowPos(window, nullptr, 0, 0, outer.right - outer.left + wider, outer.bottom - outer.top,
                     SWP_NOMOVE | SWP_NOZORDER);
        Stretch(IDOK, wider, 0);
        Stretch(IDCANCEL, wider, 0);
        Stretch(IDC_OPTIONS_TREE, 0, left - Place(IDC_OPTIONS_TREE).right);
    }

    RECT Place(int control) const {
        RECT area = {};
        GetWindowRect(GetDlgItem(window, control), &area);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
        return area;
    }

    // Moves a control by so many pixels to the right, and makes it wider.
    void Stretch(int control, int by, int wider) {
        const RECT area = Place(control);
        SetWindowPos(GetDlgItem(window, control), nullptr, area.left + by, area.top, area.right - area.left + wider,
                     area.bottom - area.top, SWP_NOZORDER);
    }

    void MakeTree() {
        static constexpr const wchar_t* Names[PageCount] = {L"General", L"Fonts", L"Colors"};
        tree = GetDlgItem(window, IDC_OPTIONS_TREE);
        const HTREEITEM root = AddItem(TVI_ROOT, L"Editor", 0);
        HTREEITEM items[PageCount];
        for (int i = 0; i < PageCount; ++i) items[i] = AddItem(root, Names[i], i);
        SendMessageW(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(root));
        SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(items[shownPage]));
        ShowPage(shownPage);
    }

    HTREEITEM AddItem(HTREEITEM parent, const wchar_t* name, int index) {
        TVINSERTSTRUCTW item = {};
        item.hParent = parent;
        item.hInsertAfter = TVI_LAST;
        item.item.mask = TVIF_TEXT | TVIF_PARAM;
        item.item.pszText = const_cast<wchar_t*>(name);
        item.item.lParam = index;
        return reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    }

    void ShowPage(uint32_t index) {
        if (index >= PageCount) return;
        for (uint32_t i = 0; i < PageCount; ++i) pages[i]->Show(i == index);
        shownPage = index;
    }

    uint32_t& shownPage;
    SettingsRecord copy = settings;
    GeneralPage general{copy};
    FontsPage fonts{copy};
    ColoursPage colours{copy};
    OptionsPage* pages[PageCount] = {&general, &fonts, &colours};
    HWND tree = nullptr;
};

} // namespace

OptionsOutcome RunOptionsDialog(HWND owner, IniFile& file, SettingsChanges& changes, uint32_t& page) {
    OptionsDialog dialog(page);
    if (dialog.Run(IDD_OPTIONS, owner) != IDOK) return OptionsOutcome::Cancelled;
    changes = AdoptSettings(dialog.Copy());
    const OwnColours own; // the system's are not stored
    return StoreSettingsToFile(file) ? OptionsOutcome::Stored : OptionsOutcome::Unstored;
}
