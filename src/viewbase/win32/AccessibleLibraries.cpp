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

Variants variants;
AccessibleLibraries::Automation automation;
AccessibleLibraries::Classic classic;
bool hasVariants = false;
bool hasAutomation = false;
bool hasClassic = false;

using SystemLibrary::Find;

bool LoadVariants() {
    if (hasVariants) return true;
    const HMODULE library = SystemLibrary::Load(L"\\oleaut32.dll");
    hasVariants = library && Find(library, variants.allocateText, "SysAllocStringLen") &&
                  Find(library, variants.freeText, "SysFreeString") &&
                  Find(library, variants.lengthOf, "SysStringLen") &&
                  Find(library, variants.createVector, "SafeArrayCreateVector");
    return hasVariants;
}

bool LoadAutomation() {
    if (hasAutomation) return true;
    const HMODULE library = SystemLibrary::Load(L"\\uiautomationcore.dll");
    hasAutomation = library && Find(library, automation.returnProvider, "UiaReturnRawElementProvider") &&
                    Find(library, automation.hostProvider, "UiaHostProviderFromHwnd") &&
                    Find(library, automation.raiseEvent, "UiaRaiseAutomationEvent") &&
                    Find(library, automation.raisePropertyChange, "UiaRaiseAutomationPropertyChangedEvent") &&
                    Find(library, automation.notSupported, "UiaGetReservedNotSupportedValue") &&
                    Find(library, automation.areClientsListening, "UiaClientsAreListening") &&
                    Find(library, automation.disconnect, "UiaDisconnectProvider");
    return hasAutomation;
}

bool LoadClassic() {
    if (hasClassic) return true;
    const HMODULE library = SystemLibrary::Load(L"\\oleacc.dll");
    hasClassic = library && Find(library, classic.resultFromObject, "LresultFromObject") &&
                 Find(library, classic.standardObject, "CreateStdAccessibleObject");
    return hasClassic;
}

} // namespace

const AccessibleLibraries::Automation* AccessibleLibraries::GetAutomation() {
    return LoadVariants() && LoadAutomation() ? &automation : nullptr;
}

const AccessibleLibraries::Classic* AccessibleLibraries::GetClassic() {
    return LoadVariants() && LoadClassic() ? &classic : nullptr;
}

const AccessibleLibraries::Automation* AccessibleLibraries::LoadedAutomation() {
    return hasAutomation ? &automation : nullptr;
}

BSTR AccessibleLibraries::MakeText(const Char* text, uint32_t length) {
    constexpr uint32_t Most = INT32_MAX / sizeof(Char); // its size in bytes is in front of it
    if (length > Most) return nullptr;
    return variants.allocateText(text ? Wide(text) : nullptr, length);
}

BSTR AccessibleLibraries::MakeText(const WString& text) { return MakeText(text.Text(), text.Length()); }

void AccessibleLibraries::FreeText(BSTR text) { variants.freeText(text); }

uint32_t AccessibleLibraries::LengthOf(BSTR text) { return variants.lengthOf(text); }

SAFEARRAY* AccessibleLibraries::MakeArray(VARTYPE type, ULONG count, void*& items) {
    SAFEARRAY* const array = variants.createVector(type, 0, count);
    // One that was just made is locked by nobody.
    if (array) items = array->pvData;
    return array;
}
