#include "app/win32/Application.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    ExitProcess(static_cast<UINT>(Application::Run(instance, FromWide(GetCommandLineW()))));
}
