#pragma once

#include <string>

// The system's clipboard.
namespace clipboard {

bool SetText(const std::wstring& text);
bool Clear();
bool HasFormat(const wchar_t* registeredName);
// Empty when there is no text.
std::wstring Text();
// The bytes of a registered format such as L"HTML Format".
std::string Bytes(const wchar_t* registeredName);

} // namespace clipboard
