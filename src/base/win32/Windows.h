#pragma once

// The system's headers, included by win32/ files only. The macros that would rename functions of our
// own in these files, but not in the portable ones that define them, are taken away again.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <windowsx.h>

#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

#undef FindText
#undef ReplaceText
#undef SetCurrentDirectory
#undef GetCurrentDirectory
#undef CompareString
#undef Yield

#include "base/Types.h"

inline const wchar_t* Wide(const Char* text) { return reinterpret_cast<const wchar_t*>(text); }
inline wchar_t* Wide(Char* text) { return reinterpret_cast<wchar_t*>(text); }
inline const Char* FromWide(const wchar_t* text) { return reinterpret_cast<const Char*>(text); }
inline Char* FromWide(wchar_t* text) { return reinterpret_cast<Char*>(text); }
