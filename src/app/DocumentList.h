#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/WString.h"

class Document;

// True for a document that has a file; the others carry a title.
bool HasFile(const Document& document);
// True for a document that collects output and into which no command runs any more.
bool IsFinishedOutput(const Document& document);

// The open documents, in opening order and in the order of their last use. Holds one reference to
// each. Walks wrap at the ends; asked about a document that is not in the list they answer null.
class DocumentList {
public:
    struct Node : HeapObject {
        Document* document = nullptr;
        Node* next = nullptr; // opening order
        Node* previous = nullptr;
        Node* previousInMru = nullptr; // use order
        Node* nextInMru = nullptr;
    };

    DocumentList() = default;
    ~DocumentList();
    DocumentList(const DocumentList&) = delete;
    DocumentList& operator=(const DocumentList&) = delete;

    // Appends a document as the least recently used one and takes over the caller's reference. False
    // without memory; the reference is then still the caller's.
    [[nodiscard]] bool Add(Document* document);
    // Takes a document out of both orders and releases it.
    void Remove(Document* document);
    // Makes a document the most recently used one.
    void Touch(Document* document);

    bool IsEmpty() const { return documents.IsEmpty(); }
    uint32_t Count() const { return count; }
    const Node* Head() const { return documents.head; }
    bool Contains(const Document* document) const { return Find(document) != nullptr; }
    // The document at a 0-based place of the opening order; null beyond the end.
    Document* At(uint32_t index) const;

    // Opening order.
    Document* Next(const Document* document) const;
    Document* Previous(const Document* document) const;
    // Use order.
    Document* NextInMru(const Document* document) const;
    Document* PreviousInMru(const Document* document) const;
    // Null when there is none.
    Document* MostRecent() const { return mostRecent ? mostRecent->document : nullptr; }

    // The document of that full path, whatever its letter case; the first output document without a file
    // of exactly that title. Null when there is none.
    Document* FindByName(const Char* fullPath) const;
    Document* FindOutput(const Char* title) const;

    // "Untitled" and the current number, which CountUntitled uses up once the document was made.
    [[nodiscard]] bool UntitledTitle(WString& title) const;
    void CountUntitled() { ++untitledNumber; }

    // Appends what the opened command shows. False without memory.
    [[nodiscard]] bool AppendOpenedText(WString& out) const;

private:
    static bool AppendOpened(WString& out, const Document& document);
    bool HasBothOrders() const; // for assertions
    Node* Find(const Document* document) const;
    void LinkLeastRecent(Node* node);
    void LinkMostRecent(Node* node);
    void UnlinkUse(Node* node);

    List<Node> documents;
    Node* mostRecent = nullptr;
    Node* leastRecent = nullptr;
    uint32_t count = 0;
    uint32_t untitledNumber = 1;
};
