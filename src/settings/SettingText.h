#pragma once

#include "base/Types.h"

// The text of a setting: absent, or NUL-terminated. Copies share one text, which never changes and goes with the last
// of them, so that a record of settings can be copied without memory.
class SettingText {
public:
    constexpr SettingText() = default;
    ~SettingText() { Release(); }
    SettingText(const SettingText& other) : shared(other.shared) { Share(); }
    SettingText& operator=(const SettingText& other);

    // Null when absent, which is not the same as empty.
    const Char* Text() const;
    const Char* OrEmpty() const { return shared ? Text() : u""; }
    // Takes a copy of `text`, which may be part of the text held; null makes it absent. Without memory it is absent.
    void Set(const Char* text);

private:
    struct Shared;

    void Share();
    void Release();

    Shared* shared = nullptr;
};
