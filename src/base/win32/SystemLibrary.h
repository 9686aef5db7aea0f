#pragma once

#include "base/win32/Windows.h"

// Libraries of the system that the program does without: they are not in its imports.
namespace SystemLibrary {

// Loads a library by its full name, so that no other one of that name is ever loaded. `name` begins with a backslash.
// Null when it is not there; else the caller's to free.
HMODULE Load(const wchar_t* name);
// Whether somebody in the process has loaded that library.
bool IsLoaded(const wchar_t* name);

// Finds a function by its name. False when the library does not have it; `function` is null then.
template <class Function> bool Find(HMODULE library, Function& function, const char* name) {
    // Through void*: the system hands every function out under one type.
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function != nullptr;
}

} // namespace SystemLibrary
