#pragma once

#include "binary/HexInput.h"
#include "support/FakeSurface.h"
#include "support/TestServices.h"

// A window and its hex editor, as a document makes and destroys them.
struct TestHexView {
    FakeSurface surface;
    HexEditor editor{surface};
    HexInput input{editor};

    TestHexView() {
        surface.editor = &input;
        surface.destroy = [this] { delete this; };
    }
    ~TestHexView() {
        surface.editor = nullptr;
        editor.SetDocument(nullptr);
    }
    // In the document's list of views, which owns it.
    static TestHexView* Create(BinaryDocument& document) {
        static TestHexView* made;
        hexServices.makeView = [](BinaryDocument& shown, NativeWindow) -> HexDocumentView* {
            made = new TestHexView;
            made->editor.SetDocument(&shown);
            return &made->editor;
        };
        return document.CreateView(nullptr) ? made : nullptr;
    }
};
