#include "app/win32/FrameMessages.h"

#include "app/MessageText.h"
#include "app/ScreenBatch.h"

Answer FrameMessages::Show(HWND owner, const Char* text, MessageKind kind) {
    static constexpr UINT Styles[] = {MB_OK | MB_ICONINFORMATION, MB_OK | MB_ICONWARNING, MB_YESNO | MB_ICONQUESTION,
                                      MB_YESNOCANCEL | MB_ICONQUESTION};
    screen.CatchUp();
    WString fitted;
    if (BuildMessageText(text, fitted)) text = fitted.Text();
    // An open dialog has to wait for the answer as the frame does.
    if (!owner) owner = GetActiveWindow();
    const int answer = MessageBoxW(owner ? owner : frame, Wide(text), L"Orvane", Styles[static_cast<int>(kind)]);
    screen.ResumeBatch();
    switch (answer) {
    case IDYES:
        return Answer::Yes;
    case IDNO:
        return Answer::No;
    case IDOK:
        return Answer::Ok;
    default:
        return Answer::Cancel;
    }
}
