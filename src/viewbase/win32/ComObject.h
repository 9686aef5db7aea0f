#pragma once

#include "base/Heap.h"
#include "base/win32/Handles.h"

#include <ole2.h>

// A reference to an object of COM, given back at the end.
template <class Interface> class ComReference : Guard {
public:
    ComReference() = default;
    // Takes over a reference.
    explicit ComReference(Interface* counted) : object(counted) {}
    ~ComReference() { Reset(); }

    // Gives back what is held and takes over a reference to `counted` instead.
    void Reset(Interface* counted = nullptr) {
        Interface* const old = object;
        object = counted;
        if (old) old->Release();
    }
    // Holds `shared` as well as whoever holds it already.
    void Share(Interface* shared) {
        if (shared) shared->AddRef();
        Reset(shared);
    }
    bool IsValid() const { return object != nullptr; }
    Interface* Get() const { return object; }
    Interface* operator->() const { return object; }

private:
    Interface* object = nullptr;
};

// An object of COM with one interface, and those that it is derived from. Made with new, with one reference for its
// maker; it goes with its last one.
template <class Interface, class... Bases> class ComObject : public Interface, public HeapObject {
public:
    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        if (!out) return E_POINTER;
        const bool known = id == __uuidof(IUnknown) || id == __uuidof(Interface) || ((id == __uuidof(Bases)) || ...);
        *out = known ? static_cast<Interface*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    // Interlocked although everything else runs on one thread: a client may release its reference on another.
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references)); }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = InterlockedDecrement(&references);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

protected:
    virtual ~ComObject() = default;

private:
    LONG references = 1;
};
