#include "RandomActions.h"

#include "app/CommandLanguage.h"
#include "app/win32/AllViews.h"
#include "document/TextBuffer.h"
#include "resource.h"
#include "view/EditorFind.h"
#include "view/TextEditor.h"
#include "viewbase/FindState.h"
#include "viewbase/ViewKey.h"

#include <algorithm>

namespace {

const std::u16string Characters =
    u"aab  {([)]}{}()<>/*\"'\t\t\r\r=#0f\u05D0\u0627\u0301\u4E2D\u202E\u2066\u00E9\uFF21\U0001F600";

constexpr uint32_t Keys[] = {ViewKey::Left,
                             ViewKey::Left,
                             ViewKey::Right,
                             ViewKey::Right,
                             ViewKey::Up,
                             ViewKey::Up,
                             ViewKey::Down,
                             ViewKey::Down,
                             ViewKey::PageUp,
                             ViewKey::PageDown,
                             ViewKey::Home,
                             ViewKey::End,
                             ViewKey::F2,
                             ViewKey::F3,
                             ViewKey::CloseBracket,
                             ViewKey::Escape,
                             ViewKey::Insert,
                             u'Z',
                             u'C',
                             u'T',
                             u'V',
                             u'W',
                             u'X',
                             u'Y',
                             u'Z',
                             u'Z',
                             ViewKey::Backspace,
                             ViewKey::Delete};

constexpr UINT Commands[] = {IDM_UNDO,   IDM_REDO,     IDM_CUT,       IDM_COPY,          IDM_PASTE, IDM_DELETE,
                             IDM_DELETE, IDM_BOOKMARK, IDM_NEXT_FILE, IDM_PREVIOUS_FILE, IDM_SAVE,  IDM_CLOSE};

constexpr UINT PaneCommands[] = {IDM_SPLIT_VERTICALLY, IDM_SPLIT_HORIZONTALLY, IDM_CLOSE_PANE,
                                 IDM_NEXT_PANE,        IDM_PREVIOUS_PANE,      IDM_NEXT_FILE};

// Drawn straight, the guides of all rows are on the first one, and only those of the rows that are painted: these
// two do not go together.
const std::u16string Settings[] = {
    u"FontSize 7",        u"FontSize 10",           u"FontSize 13",           u"FontBold 1",
    u"FontBold 0",        u"FontName Arial",        u"FontName Courier New",  u"CaretWidth 5",
    u"ShowWhitespace 1",  u"ShowWhitespace 0",      u"ReplaceTabs 0",         u"ReplaceTabs 1",
    u"SpacesPerTab 2",    u"SpacesPerTab 8",        u"SpaceColor #ff0000",    u"MarginWidth 3",
    u"MarginWidth 20",    u"MarginColor #a0a0ff",   u"BookmarkColor #00c000", u"GuideColor #ff00ff",
    u"ColumnGuide 0",     u"ColumnGuide 12",        u"IndentGuide 1",         u"IndentGuide 0",
    u"ShowLineNumbers 0", u"ShowLineNumbers 1",     u"VarWidthLineNumbers 0", u"VarWidthLineNumbers 1",
    u"RenderType 0",      u"RenderType 2",          u"TextFg #202080",        u"TextBg #fffff0",
    u"SelFg #ffff00",     u"SelBg #400040",         u"LineNumBg #e0ffe0",     u"LineNumFg #800000",
    u"CommentBg #f0f0f0", u"LongCommentFg #008080", u"BraceMatchBg #ff8000",  u"BraceMatchFg #0000ff",
    u"KeywordFg #ff00ff", u"BinFg #00a000",         u"HtmlTagFg #a00000",     u"PasteKeepSelection 0",
};

std::string Plain(const std::u16string& text) {
    std::string plain;
    for (const char16_t c : text) plain += c >= u' ' && c < 0x7F ? static_cast<char>(c) : '?';
    return plain;
}

} // namespace

std::string RandomActions::Next() {
    struct Row {
        std::string (RandomActions::*act)();
        uint32_t weight;
    };
    static constexpr Row Rows[] = {
        {&RandomActions::Type, 22},          {&RandomActions::PressKey, 32},     {&RandomActions::MoveToBracket, 8},
        {&RandomActions::Scroll, 8},         {&RandomActions::TurnWheel, 5},     {&RandomActions::UseMouse, 12},
        {&RandomActions::ChooseCommand, 10}, {&RandomActions::ChangePanes, 8},   {&RandomActions::ChangeSetting, 5},
        {&RandomActions::EnterLine, 4},      {&RandomActions::EditElsewhere, 5}, {&RandomActions::ReplaceEverywhere, 1},
        {&RandomActions::MoveFocus, 3},      {&RandomActions::Resize, 1},        {&RandomActions::DragGap, 3},
        {&RandomActions::WhileSuspended, 3},
    };
    uint32_t sum = 0;
    for (const Row& row : Rows) sum += row.weight;
    uint32_t at = random.Below(sum);
    const Row* row = Rows;
    for (; at >= row->weight; ++row) at -= row->weight;
    return (this->*row->act)();
}

std::vector<HWND> RandomActions::PanesOf(HWND frame) {
    std::vector<HWND> panes;
    HWND pane = nullptr;
    while ((pane = FindWindowExW(frame, pane, L"OrvaneVWnd", nullptr)) != nullptr) panes.push_back(pane);
    return panes;
}

std::string RandomActions::Type() {
    const uint32_t at = random.Below(Characters.size());
    std::u16string typed(1, Characters[at]);
    if (typed[0] >= 0xD800 && typed[0] < 0xDC00) typed += Characters[at + 1];
    Hold(typed[0] == u'\t' && random.OneIn(2), false);
    const HWND focus = GetFocus();
    for (const char16_t c : typed) SendMessageW(focus, WM_CHAR, c, 1);
    Hold(false, false);
    return "type U+" + std::to_string(static_cast<unsigned>(typed[0]));
}

std::string RandomActions::PressKey() {
    const uint32_t key = random.Pick(Keys);
    const bool shift = random.OneIn(3);
    const bool ctrl = (key >= u'A' && key <= u'Z') || key == ViewKey::CloseBracket || random.OneIn(4);
    Hold(shift, ctrl);
    SendMessageW(GetFocus(), WM_KEYDOWN, key, 1);
    Hold(false, false);
    return "press " + std::to_string(key) + (shift ? " shift" : "") + (ctrl ? " ctrl" : "");
}

// Where its partner is marked in every pane that shows it.
std::string RandomActions::MoveToBracket() {
    TextBuffer* const text = ActiveText();
    auto* const editor = text ? static_cast<TextEditor*>(text->ActiveView()) : nullptr;
    if (!editor || !text->CommitEdit()) return "no bracket";
    const std::u16string content(text->Content(), text->Length());
    const size_t at = content.find_first_of(u"({[", random.Below(content.size() + 1));
    if (at == content.npos) return "no bracket";
    editor->MoveCaretToOffset(static_cast<uint32_t>(at), random.OneIn(4));
    return "to the bracket at " + std::to_string(at);
}

std::string RandomActions::Scroll() {
    const UINT message = random.OneIn(3) ? WM_HSCROLL : WM_VSCROLL;
    const WPARAM code = random.Below(SB_BOTTOM + 1u);
    SendMessageW(Target(), message, code, 0);
    return (message == WM_HSCROLL ? "scroll across " : "scroll ") + std::to_string(code);
}

std::string RandomActions::TurnWheel() {
    const int delta = (static_cast<int>(random.Below(13)) - 6) * 60;
    const bool ctrl = random.OneIn(8);
    const bool across = !ctrl && random.OneIn(3);
    const WPARAM parameter = MAKEWPARAM(ctrl ? MK_CONTROL : 0, static_cast<WORD>(delta));
    SendMessageW(Target(), across ? WM_MOUSEHWHEEL : WM_MOUSEWHEEL, parameter, 0);
    return std::string("wheel ") + (ctrl ? "ctrl " : across ? "across " : "") + std::to_string(delta);
}

std::string RandomActions::UseMouse() {
    const HWND window = Target();
    const POINT first = PointIn(window);
    const WPARAM shift = random.OneIn(4) ? MK_SHIFT : 0;
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON | shift, MAKELPARAM(first.x, first.y));
    const uint32_t moves = random.Below(3);
    for (uint32_t i = 0; i < moves; ++i) {
        const POINT point = PointIn(window);
        SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(point.x, point.y));
        if (random.OneIn(2)) SendMessageW(window, WM_TIMER, 1, 0);
    }
    SendMessageW(window, WM_LBUTTONUP, 0, 0);
    const bool twice = random.OneIn(4);
    if (twice) SendMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(first.x, first.y));
    return "click at " + std::to_string(first.x) + "," + std::to_string(first.y) + (shift ? " shift" : "") + " moves " +
           std::to_string(moves) + (twice ? " twice" : "");
}

std::string RandomActions::ChooseCommand() {
    const UINT command = random.Pick(Commands);
    // Views that are suspended do not get back what goes with their document.
    if (command == IDM_CLOSE && (suspended || !random.OneIn(4))) return Choose(IDM_UNDO);
    return Choose(command);
}

std::string RandomActions::ChangePanes() {
    const UINT command = random.Pick(PaneCommands);
    const size_t count = PanesOf(frame.Window()).size();
    const bool splits = command == IDM_SPLIT_VERTICALLY || command == IDM_SPLIT_HORIZONTALLY;
    if (splits && count > 2) return Choose(IDM_CLOSE_PANE);
    return Choose(command == IDM_CLOSE_PANE && count == 1 ? IDM_SPLIT_VERTICALLY : command);
}

std::string RandomActions::ChangeSetting() {
    const std::u16string& setting = random.Pick(Settings);
    if (setting == u"RenderType 2") Execute(u"setopt IndentGuide 0");
    if (setting == u"IndentGuide 1") Execute(u"setopt RenderType 0");
    return Execute(u"setopt " + setting);
}

std::string RandomActions::EnterLine() {
    const std::string number = Number(80);
    const std::u16string wide(number.begin(), number.end());
    switch (random.Below(5)) {
    case 0:
        return Execute(u"setengine cpp");
    case 1:
        return Execute(u"setengine html");
    case 2:
        return Execute(u"line " + wide);
    default:
        return Execute(u"bm " + wide);
    }
}

std::string RandomActions::EditElsewhere() {
    TextBuffer* const text = ActiveText();
    if (!text || !text->CommitEdit()) return "edit nothing";
    const uint32_t at = random.Below(text->Length() + 1);
    if (random.OneIn(2)) {
        const uint32_t count = std::min(random.Below(40), text->Length() - at);
        static_cast<void>(text->DeleteText({at, at + count}));
        return "delete " + std::to_string(count) + " at " + std::to_string(at);
    }
    const std::u16string inserted = std::u16string(random.Below(4), u'\n') + u"/* in */ serted (" +
                                    std::u16string(random.Below(4), u'\n') + std::u16string(random.Below(2), u'}');
    static_cast<void>(text->InsertText(at, inserted.c_str(), static_cast<uint32_t>(inserted.size())));
    return "insert " + std::to_string(inserted.size()) + " at " + std::to_string(at);
}

std::string RandomActions::ReplaceEverywhere() {
    TextBuffer* const text = ActiveText();
    auto* const editor = text ? static_cast<TextEditor*>(text->ActiveView()) : nullptr;
    if (!editor) return "replace nothing";
    const std::u16string pattern(1, random.OneIn(2) ? u'{' : u'a');
    const std::u16string by = random.OneIn(2) ? u"b" : u"\n(";
    static_cast<void>(findState.searchHistory.Add(pattern.c_str(), 1));
    const bool inSelection = random.OneIn(2);
    EditorFind::ReplaceAll(*editor, by.c_str(), static_cast<uint32_t>(by.size()), inSelection);
    return "replace all " + Plain(pattern) + " by " + Plain(by) + (inSelection ? " in selection" : "");
}

std::string RandomActions::MoveFocus() {
    if (random.OneIn(3)) return Choose(IDM_COMMAND_WINDOW);
    SetFocus(Target());
    return "focus a pane";
}

std::string RandomActions::Resize() {
    const int width = 180 + static_cast<int>(random.Below(160));
    const int height = 160 + static_cast<int>(random.Below(120));
    SetWindowPos(frame.Window(), nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    return "resize to " + std::to_string(width) + "x" + std::to_string(height);
}

std::string RandomActions::DragGap() {
    RECT place = {};
    GetWindowRect(Target(), &place);
    MapWindowPoints(nullptr, frame.Window(), reinterpret_cast<POINT*>(&place), 2);
    const LONG distance = static_cast<LONG>(random.Below(81)) - 40;
    const bool across = random.OneIn(2);
    const POINT from = across ? POINT{place.right, place.top + 5} : POINT{place.left + 5, place.bottom};
    const POINT to = across ? POINT{from.x + distance, from.y} : POINT{from.x, from.y + distance};
    SendMessageW(frame.Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
    SendMessageW(frame.Window(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to.x, to.y));
    SendMessageW(frame.Window(), WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
    return std::string("drag a gap ") + (across ? "across " : "down ") + std::to_string(distance);
}

std::string RandomActions::WhileSuspended() {
    if (suspended) return "suspended already";
    suspended = true;
    ForEachView(frame.Commands().Documents(), [](View& view) { view.SuspendRedraw(false); });
    std::string done = "suspended:";
    for (uint32_t count = 1 + random.Below(4); count; --count) done += " " + Next() + ",";
    ForEachView(frame.Commands().Documents(), [](View& view) { view.SuspendRedraw(true); });
    suspended = false;
    return done + " resumed";
}

std::string RandomActions::Choose(UINT command) {
    SendMessageW(frame.Window(), WM_COMMAND, command, 0);
    return "command " + std::to_string(command);
}

std::string RandomActions::Execute(const std::u16string& line) {
    ExecuteCommandLine(frame.Commands(), line.c_str());
    return Plain(line);
}

std::string RandomActions::Number(uint32_t limit) { return std::to_string(random.Below(limit)); }

void RandomActions::Hold(bool shift, bool ctrl) const {
    BYTE states[256] = {};
    GetKeyboardState(states);
    states[VK_SHIFT] = shift ? 0x80 : 0;
    states[VK_CONTROL] = ctrl ? 0x80 : 0;
    SetKeyboardState(states);
}

HWND RandomActions::Target() {
    const std::vector<HWND> panes = PanesOf(frame.Window());
    return panes.empty() ? frame.Window() : random.Pick(panes);
}

POINT RandomActions::PointIn(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    // Some of them are outside.
    return {static_cast<LONG>(random.Below(static_cast<size_t>(client.right) + 40)) - 20,
            static_cast<LONG>(random.Below(static_cast<size_t>(client.bottom) + 40)) - 20};
}

TextBuffer* RandomActions::ActiveText() const {
    Document* const document = frame.Commands().Documents().MostRecent();
    return document && !document->IsBinary() ? static_cast<TextBuffer*>(document) : nullptr;
}
