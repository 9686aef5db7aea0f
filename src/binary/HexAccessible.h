#pragma once

#include "viewbase/AccessibleElement.h"

class HexEditor;

// What a hex view says of itself to screen readers. Its value is the caret's row as it is shown: the offset, the bytes
// and their characters, with two blanks between these.
class HexAccessible final : public AccessibleElement {
public:
    explicit HexAccessible(HexEditor& shown) : editor(shown) {}
    HexAccessible(const HexAccessible&) = delete;
    HexAccessible& operator=(const HexAccessible&) = delete;

    // AccessibleElement.
    [[nodiscard]] bool AppendValue(WString& out) override;
    bool IsReadOnly() const override;
    bool HasText() const override { return false; }
    AccessibleState State() const override;

private:
    const Document* ShownDocument() const override;
    HexEditor& editor;
};
