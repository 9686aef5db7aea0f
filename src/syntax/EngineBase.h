#pragma once

#include "base/Assert.h"
#include "base/WString.h"
#include "syntax/EngineDefinition.h"
#include "syntax/SyntaxEngine.h"

// What the engines have in common: the references to it, the end marker, and the brackets unless one has more.
class EngineBase : public SyntaxEngine {
public:
    EngineBase(const EngineBase&) = delete;
    EngineBase& operator=(const EngineBase&) = delete;

    uint32_t AddRef() override { return ++refCount; }
    uint32_t Release() override {
        ORVANE_ASSERT(refCount > 0);
        const uint32_t left = --refCount;
        if (left == 0) delete this;
        return left;
    }
    bool SetEndMarker(const Char* marker) override {
        if (!endMarker.Assign(marker ? marker : u"")) return false;
        EndMarkerChanged();
        return true;
    }
    const Char* BraceCharacters() const override { return u"{}()[]"; }

protected:
    EngineBase() = default;
    virtual ~EngineBase() = default;
    // For what an engine has derived from the end marker.
    virtual void EndMarkerChanged() {}

    uint32_t refCount = 1; // the maker's
    WString endMarker;
};
