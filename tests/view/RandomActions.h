#pragma once

#include "app/win32/MainFrame.h"
#include "support/Random.h"

#include <string>
#include <vector>

class TextBuffer;

// Does random things to a frame, as its user and the commands of its documents would. Nothing of it opens a dialog
// but message boxes, which the test has to answer.
class RandomActions {
public:
    RandomActions(MainFrame& used, uint32_t seed) : frame(used), random(seed) {}

    // Does one and says what it was.
    std::string Next();
    static std::vector<HWND> PanesOf(HWND frame);

private:
    std::string Type();
    std::string PressKey();
    std::string MoveToBracket();
    std::string Scroll();
    std::string TurnWheel();
    std::string UseMouse();
    std::string ChooseCommand();
    std::string ChangePanes();
    std::string ChangeSetting();
    std::string EnterLine();
    std::string EditElsewhere();
    std::string ReplaceEverywhere();
    std::string MoveFocus();
    std::string Resize();
    std::string DragGap();
    std::string WhileSuspended();

    std::string Choose(UINT command);
    std::string Execute(const std::u16string& line);
    std::string Number(uint32_t limit);
    void Hold(bool shift, bool ctrl) const;
    HWND Target();
    POINT PointIn(HWND window);
    // Null when the active pane shows none.
    TextBuffer* ActiveText() const;

    MainFrame& frame;
    Random random;
    bool suspended = false;
};
