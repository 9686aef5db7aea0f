#pragma once

#include "viewbase/CharWidths.h"

// What a TextEditor asks of its window in addition to EditorSurface. Everything may be called without a window and does
// nothing then.
class TextSurface {
public:
    // Of single characters in the font that the window shows now.
    virtual CharWidths& Widths() = 0;
    // Moves the picture by `pixels` (negative: upwards), together with what is still to be painted, and invalidates
    // what comes in; invalidates everything when a row's picture depends on where it is (drawn without the back
    // buffer).
    virtual void ScrollPicture(int32_t pixels) = 0;
    // Paints at once what is invalid.
    virtual void UpdateNow() = 0;
    // Destroys the caret: it is to the left of the text area.
    virtual void HideCaret() = 0;
    // A modal dialog; it works on the editor and on `findState`.
    virtual void ShowReplaceDialog(bool multiLineSelection) = 0;

protected:
    ~TextSurface() = default;
};
