#include "viewbase/win32/AccessibleLibraries.h"

#include "base/win32/SystemLibrary.h"

using SystemLibrary::Find;

namespace {

constexpr wchar_t AutomationName[] = L"\\uiautomationcore.dll";

} // namespace

bool AccessibleLibraries::LoadVariants() {
    if (hasVariants) return true;
    const HMODULE library = SystemLibrary::Load(L"\\oleaut32.dll");
    hasVariants = library && Find(library, variants.allocateText, "SysAllocStringLen") &&
                  Find(library, variants.freeText, "SysFreeString") &&
                  Find(library, variants.lengthOf, "SysStringLen") &&
                  Find(library, variants.createVector, "SafeArrayCreateVector");
    return hasVariants;
}

bool AccessibleLibraries::LoadAutomation() {
    if (hasAutomation) return true;
    const HMODULE library = SystemLibrary::Load(AutomationName);
    hasAutomation = library && Find(library, automation.returnProvider, "UiaReturnRawElementProvider") &&
                    Find(library, automation.hostProvider, "UiaHostProviderFromHwnd") &&
                    Find(library, automation.raiseEvent, "UiaRaiseAutomationEvent") &&
                    Find(library, automation.raisePropertyChange, "UiaRaiseAutomationPropertyChangedEvent") &&
                    Find(library, automation.notSupported, "UiaGetReservedNotSupportedValue") &&
                    Find(library, automation.areClientsListening, "UiaClientsAreListening") &&
                    Find(library, automation.disconnect, "UiaDisconnectProvider");
    return hasAutomation;
}

bool AccessibleLibraries::LoadClassic() {
    if (hasClassic) return true;
    const HMODULE library = SystemLibrary::Load(L"\\oleacc.dll");
    hasClassic = library && Find(library, classic.resultFromObject, "LresultFromObject") &&
                 Find(library, classic.standardObject, "CreateStdAccessibleObject");
    return hasClassic;
}

const AccessibleLibraries::Automation* AccessibleLibraries::GetAutomation() {
    return LoadVariants() && LoadAutomation() ? &automation : nullptr;
}

const AccessibleLibraries::Classic* AccessibleLibraries::GetClassic() {
    return LoadVariants() && LoadClassic() ? &classic : nullptr;
}

bool AccessibleLibraries::IsAutomationLoaded() { return SystemLibrary::IsLoaded(AutomationName); }

BSTR AccessibleLibraries::MakeText(const Char* text, uint32_t length) const {
    constexpr uint32_t Most = INT32_MAX / sizeof(Char); // its size in bytes is in front of it
    if (length > Most) return nullptr;
    return variants.allocateText(text ? Wide(text) : nullptr, length);
}

SAFEARRAY* AccessibleLibraries::MakeArray(VARTYPE type, ULONG count, void*& items) const {
    SAFEARRAY* const array = variants.createVector(type, 0, count);
    // One that was just made is locked by nobody.
    if (array) items = array->pvData;
    return array;
}
