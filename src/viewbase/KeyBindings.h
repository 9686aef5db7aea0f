#pragma once

#include "document/Document.h"
#include "viewbase/EditorSurface.h"

// Whether a key is bound with Ctrl held, without, or both ways.
enum class CtrlKey : uint8_t { Up, Down, Either };

// What a key, a virtual-key code, does. A `Press` says what it works on.
template <class Press> struct KeyBinding {
    uint32_t key;
    CtrlKey ctrl;
    void (*handle)(const Press& press);
};

// Has the document of the editor that a key was pressed in do a command of its own.
template <DocumentCommand Kind, class Press> void DoInDocument(const Press& press) {
    press.editor.GetDocument()->DoCommand(Kind);
}

// What a key does with Ctrl as it is held now; null for one that is not bound. AltGr arrives as Ctrl+Alt and types a
// character, so it counts as a key without Ctrl.
template <class Press, size_t Count>
auto HandlerOf(const KeyBinding<Press> (&bindings)[Count], const EditorSurface& surface, uint32_t key)
    -> void (*)(const Press&) {
    const CtrlKey held = surface.IsCtrlDown() && !surface.IsAltDown() ? CtrlKey::Down : CtrlKey::Up;
    for (const KeyBinding<Press>& binding : bindings) {
        if (binding.key == key && (binding.ctrl == held || binding.ctrl == CtrlKey::Either)) return binding.handle;
    }
    return nullptr;
}
