#pragma once

#include <string>

// Saves the whole screen as a bitmap file.
bool SaveScreen(const std::wstring& path);
