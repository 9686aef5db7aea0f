#include "viewbase/win32/AccessibleLibraries.h"

#include "base/win32/SystemLibrary.h"

namespace {

// What texts and arrays for clients are made of.
struct Variants {
    decltype(&SysAllocStringLen) allocateText = nullptr;
    decltype(&SysFreeString) freeText = nullptr;
    decltype(&SysStringLen) lengthOf = nullptr;
    decltype(&SafeArrayCreateVector) createVector = nullptr;
};

// Process-wide: each library is loaded once, when a client first asks, and stays loaded.
struct Libraries {
    Variants variants;
    AccessibleLibraries::Automation automation;
    AccessibleLibraries::Classic classic;
    bool hasVariants = false;
    bool hasAutomation = false;
    bool hasClassic = false;
};
Libraries libraries;

using SystemLibrary::Find;

bool LoadVariants() {
    if (libraries.hasVariants) return true;
    const HMODULE library = SystemLibrary::Load(L"\\oleaut32.dll");
    libraries.hasVariants = library && Find(library, libraries.variants.allocateText, "SysAllocStringLen") &&
                            Find(library, libraries.variants.freeText, "SysFreeString") &&
                            Find(library, libraries.variants.lengthOf, "SysStringLen") &&
                            Find(library, libraries.variants.createVector, "SafeArrayCreateVector");
    return libraries.hasVariants;
}

bool LoadAutomation() {
    if (libraries.hasAutomation) return true;
    const HMODULE library = SystemLibrary::Load(L"\\uiautomationcore.dll");
    libraries.hasAutomation =
        library && Find(library, libraries.automation.returnProvider, "UiaReturnRawElementProvider") &&
        Find(library, libraries.automation.hostProvider, "UiaHostProviderFromHwnd") &&
        Find(library, libraries.automation.raiseEvent, "UiaRaiseAutomationEvent") &&
        Find(library, libraries.automation.raisePropertyChange, "UiaRaiseAutomationPropertyChangedEvent") &&
        Find(library, libraries.automation.notSupported, "UiaGetReservedNotSupportedValue") &&
        Find(library, libraries.automation.areClientsListening, "UiaClientsAreListening") &&
        Find(library, libraries.automation.disconnect, "UiaDisconnectProvider");
    return libraries.hasAutomation;
}

bool LoadClassic() {
    if (libraries.hasClassic) return true;
    const HMODULE library = SystemLibrary::Load(L"\\oleacc.dll");
    libraries.hasClassic = library && Find(library, libraries.classic.resultFromObject, "LresultFromObject") &&
                           Find(library, libraries.classic.standardObject, "CreateStdAccessibleObject");
    return libraries.hasClassic;
}

} // namespace

const AccessibleLibraries::Automation* AccessibleLibraries::GetAutomation() {
    return LoadVariants() && LoadAutomation() ? &libraries.automation : nullptr;
}

const AccessibleLibraries::Classic* AccessibleLibraries::GetClassic() {
    return LoadVariants() && LoadClassic() ? &libraries.classic : nullptr;
}

const AccessibleLibraries::Automation* AccessibleLibraries::LoadedAutomation() {
    return libraries.hasAutomation ? &libraries.automation : nullptr;
}

BSTR AccessibleLibraries::MakeText(const Char* text, uint32_t length) {
    constexpr uint32_t Most = INT32_MAX / sizeof(Char); // its size in bytes is in front of it
    if (length > Most) return nullptr;
    return libraries.variants.allocateText(text ? Wide(text) : nullptr, length);
}

BSTR AccessibleLibraries::MakeText(const WString& text) { return MakeText(text.Text(), text.Length()); }

void AccessibleLibraries::FreeText(BSTR text) { libraries.variants.freeText(text); }

uint32_t AccessibleLibraries::LengthOf(BSTR text) { return libraries.variants.lengthOf(text); }

SAFEARRAY* AccessibleLibraries::MakeArray(VARTYPE type, ULONG count, void*& items) {
    SAFEARRAY* const array = libraries.variants.createVector(type, 0, count);
    // One that was just made is locked by nobody.
    if (array) items = array->pvData;
    return array;
}
