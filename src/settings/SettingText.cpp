#include "settings/SettingText.h"

#include "base/Assert.h"
#include "base/Heap.h"
#include "base/WString.h"

struct SettingText::Shared : HeapObject {
    WString text;
    uint32_t owners = 1;
};

SettingText& SettingText::operator=(const SettingText& other) {
    if (this == &other) return *this;
    Release();
    shared = other.shared;
    Share();
    return *this;
}

const Char* SettingText::Text() const { return shared ? shared->text.Text() : nullptr; }

void SettingText::Set(const Char* text) {
    Shared* made = text ? new Shared : nullptr;
    if (made && !made->text.Assign(text)) {
        delete made;
        made = nullptr;
    }
    Release(); // only now: `text` may be in it
    shared = made;
}

void SettingText::Share() {
    ORVANE_ASSERT(!shared || shared->owners > 0);
    if (shared) ++shared->owners;
}

void SettingText::Release() {
    ORVANE_ASSERT(!shared || shared->owners > 0);
    if (shared && --shared->owners == 0) delete shared;
    shared = nullptr;
}
