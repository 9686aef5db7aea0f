#pragma once

#include "base/WString.h"
#include "base/win32/Handles.h"
#include "viewbase/win32/AccessibleInterfaces.h"

// The system's libraries for screen readers, as one view's element and all that clients have of it use them. They are
// loaded when somebody asks a window what it shows and stay loaded until the process ends, since their threads may be
// in them: nothing here gives one back.
class AccessibleLibraries : Guard {
public:
    // What the automation library has.
    struct Automation {
        LRESULT(WINAPI* returnProvider)(HWND window, WPARAM wparam, LPARAM lparam, IRawElementProviderSimple* provider);
        HRESULT(WINAPI* hostProvider)(HWND window, IRawElementProviderSimple** out);
        HRESULT(WINAPI* raiseEvent)(IRawElementProviderSimple* provider, EVENTID event);
        HRESULT(WINAPI* raisePropertyChange)
        (IRawElementProviderSimple* provider, PROPERTYID property, VARIANT before, VARIANT after);
        HRESULT(WINAPI* notSupported)(IUnknown** out);
        BOOL(WINAPI* areClientsListening)();
        HRESULT(WINAPI* disconnect)(IRawElementProviderSimple* provider);
    };
    // The older library's, which every client can use.
    struct Classic {
        decltype(&LresultFromObject) resultFromObject = nullptr;
        decltype(&CreateStdAccessibleObject) standardObject = nullptr;
    };

    // Each loads its library when first called. Null when that, one of its functions or what texts and arrays are made
    // of is not there; the next call tries again.
    const Automation* GetAutomation();
    const Classic* GetClassic();
    // What GetAutomation has got; null before.
    const Automation* FoundAutomation() const { return hasAutomation ? &automation : nullptr; }
    // Whether the library is loaded, by anyone in the process: then GetAutomation loads nothing.
    static bool IsAutomationLoaded();

    // For clients, which free them; null without memory. Call them once one of the above was there.
    BSTR MakeText(const Char* text, uint32_t length) const; // to be filled by the caller when `text` is null
    BSTR MakeText(const WString& text) const { return MakeText(text.Text(), text.Length()); }
    void FreeText(BSTR text) const { variants.freeText(text); }
    uint32_t LengthOf(BSTR text) const { return variants.lengthOf(text); } // in characters, NULs included
    // Of `count` items of VT_UNKNOWN or VT_R8; `items` is where they are to be written.
    SAFEARRAY* MakeArray(VARTYPE type, ULONG count, void*& items) const;

private:
    // What texts and arrays for clients are made of.
    struct Variants {
        decltype(&SysAllocStringLen) allocateText = nullptr;
        decltype(&SysFreeString) freeText = nullptr;
        decltype(&SysStringLen) lengthOf = nullptr;
        decltype(&SafeArrayCreateVector) createVector = nullptr;
    };

    bool LoadVariants();
    bool LoadAutomation();
    bool LoadClassic();

    Variants variants;
    Automation automation = {};
    Classic classic;
    bool hasVariants = false;
    bool hasAutomation = false;
    bool hasClassic = false;
};
