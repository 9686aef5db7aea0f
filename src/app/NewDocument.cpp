#include "app/NewDocument.h"

#include "app/DocumentList.h"
#include "document/TextBuffer.h"

TextBuffer* MakeTitledText(TextServices& services, const Char* title, bool isNew) {
    auto* const document = new TextBuffer(services);
    if (!document) return nullptr;
    document->AddRef();
    if (!document->MakeEmpty(isNew) || !document->SetTitle(title) || !document->CreateView(nullptr)) {
        document->Release();
        return nullptr;
    }
    document->ResetSyntaxEngine();
    return document;
}

bool AdoptDocument(DocumentList& documents, Document* document) {
    if (documents.Add(document)) return true;
    document->Release();
    return false;
}
