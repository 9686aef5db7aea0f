#include "app/win32/HelpPage.h"

#include "app/UserPrompt.h"
#include "base/Array.h"
#include "base/Path.h"
#include "base/Platform.h"
#include "base/TextFormat.h"
#include "base/WString.h"
#include "base/win32/Ole.h"

namespace {

constexpr Char PageName[] = u"orvane.html";

bool FindPage(WString& path) {
    if (!path.Reserve(Platform::LongestPath)) return false;
    constexpr uint32_t Room = Platform::LongestPath + 1; // with the terminator, for which Reserve has some as well
    const DWORD length = GetModuleFileNameW(nullptr, Wide(path.Data()), Room);
    WString program;
    if (length == 0 || length >= Room || !program.Assign(path.Data(), length)) return false;
    Path::RemoveLastComponent(program);
    return path.Assign(program) && Path::Join(path, PageName);
}

void Warn(UserPrompt& prompt, const Char* format, const WString& path) {
    WString text;
    if (Text::AppendFormat(text, format, path.Text())) prompt.AskUser(text.Text(), MessageKind::Warning);
}

} // namespace

void OpenHelpPage(HWND owner, UserPrompt& prompt, Ole& ole) {
    WString path;
    if (!FindPage(path)) return;
    const Platform::Entry kind = Platform::EntryKind(path.Text());
    if (kind == Platform::Entry::Missing || kind == Platform::Entry::Directory)
        return Warn(prompt, u"The manual is missing: %s", path);
    ole.Use(); // for the shell, which opens most pages without it as well
    const HINSTANCE result = ShellExecuteW(owner, L"open", Wide(path.Text()), nullptr, nullptr, SW_SHOWNORMAL);
    // Anything above is no handle, but success.
    constexpr INT_PTR LastError = 32;
    if (reinterpret_cast<INT_PTR>(result) <= LastError) Warn(prompt, u"Failed opening file: %s", path);
}
