#pragma once

#include "Ratio.h"
#include "SampleText.h"

#include "../tests/support/TestServices.h"
#include "document/TextBuffer.h"

#include <string>
#include <unistd.h>

namespace Bench {

// A document with the given bytes, loaded from a file that is gone again.
class SampleDocument {
public:
    explicit SampleDocument(const std::string& bytes) : document(new TextBuffer(textServices)) {
        constexpr char Name[] = "bench-document.cpp";
        WriteScratch(Name, bytes.data(), bytes.size());
        document->AddRef();
        Check(document->Load(ScratchPath(Name).c_str(), false), "the sample does not load");
        Check(document->Length() == bytes.size(), "the sample is not loaded as it is");
        unlink(ScratchName(Name).c_str());
    }
    ~SampleDocument() { document->Release(); }
    SampleDocument(const SampleDocument&) = delete;
    SampleDocument& operator=(const SampleDocument&) = delete;

    TextBuffer* operator->() const { return document; }
    TextBuffer& operator*() const { return *document; }

private:
    TextBuffer* document;
};

} // namespace Bench
