#include "app/DocumentList.h"

#include "base/Assert.h"
#include "base/Platform.h"
#include "base/Text.h"
#include "base/TextFormat.h"
#include "document/Document.h"
#include "document/TextDocumentView.h"

#include <utility>

namespace {

bool IsPlain(Char c) { return Text::IsDigit(c) || Text::IsAsciiLetter(c); }

// A fast way to tell names apart: compares from the end, where the names of a folder differ. True when the last
// difference is between two ASCII letters or digits with only ASCII after it, which differ in every locale.
bool DifferPlainly(const Char* left, const Char* right) {
    const Char* leftEnd = left + Text::Length(left);
    const Char* rightEnd = right + Text::Length(right);
    while (leftEnd != left && rightEnd != right) {
        const Char one = Text::FoldCase(*--leftEnd);
        const Char other = Text::FoldCase(*--rightEnd);
        if (one != other) return IsPlain(one) && IsPlain(other);
        if (one >= 0x80) return false;
    }
    return false;
}

// The system's comparison is slow, and whoever opens thousands of files compares each with all others.
bool IsName(const Char* left, const Char* right) {
    return !DifferPlainly(left, right) && Platform::CompareNames(left, right) == 0;
}

} // namespace

bool HasFile(const Document& document) {
    // A document that got a file by being saved may keep the title it had before.
    const Char* const name = document.GetName();
    return *name && !Text::Equal(name, document.GetTitle());
}

bool IsFinishedOutput(const Document& document) {
    bool runs = false;
    return document.GetOutputState(runs) && !runs;
}

DocumentList::~DocumentList() {
    while (documents.head) Remove(documents.head->document);
}

bool DocumentList::Add(Document* document) {
    auto* const node = new Node;
    if (!node) return false;
    node->document = document;
    documents.Append(node);
    LinkLeastRecent(node);
    ++count;
    ORVANE_ASSERT(HasBothOrders());
    return true;
}

void DocumentList::Remove(Document* document) {
    Node* const node = Find(document);
    if (!node) return;
    documents.Remove(node);
    UnlinkUse(node);
    delete node;
    --count;
    ORVANE_ASSERT(HasBothOrders());
    document->Release();
}

void DocumentList::Touch(Document* document) {
    Node* const node = Find(document);
    if (!node || node == mostRecent) return;
    UnlinkUse(node);
    LinkMostRecent(node);
    ORVANE_ASSERT(HasBothOrders());
}

Document* DocumentList::At(uint32_t index) const {
    const Node* node = documents.head;
    while (node && index-- > 0) node = node->next;
    return node ? node->document : nullptr;
}

Document* DocumentList::Next(const Document* document) const {
    const Node* const node = Find(document);
    if (!node) return nullptr;
    return (node->next ? node->next : documents.head)->document;
}

Document* DocumentList::Previous(const Document* document) const {
    const Node* const node = Find(document);
    if (!node) return nullptr;
    return (node->previous ? node->previous : documents.tail)->document;
}

Document* DocumentList::NextInMru(const Document* document) const {
    const Node* const node = Find(document);
    if (!node) return nullptr;
    return node->nextInMru ? node->nextInMru->document : MostRecent();
}

Document* DocumentList::PreviousInMru(const Document* document) const {
    const Node* const node = Find(document);
    if (!node) return nullptr;
    return (node->previousInMru ? node->previousInMru : leastRecent)->document;
}

Document* DocumentList::FindByName(const Char* fullPath) const {
    // An output document may carry a command's path as its title.
    for (const Node* node = documents.head; node; node = node->next)
        if (IsName(node->document->GetName(), fullPath) && HasFile(*node->document)) return node->document;
    return nullptr;
}

Document* DocumentList::FindOutput(const Char* title) const {
    bool runs = false;
    for (const Node* node = documents.head; node; node = node->next) {
        const Document& document = *node->document;
        const bool isOutput = !HasFile(document) && document.GetOutputState(runs);
        if (isOutput && Text::Equal(document.GetTitle(), title)) return node->document;
    }
    return nullptr;
}

bool DocumentList::UntitledTitle(WString& title) const {
    WString made;
    if (!Text::AppendFormat(made, u"Untitled%u", untitledNumber)) return false;
    title = std::move(made);
    return true;
}

bool DocumentList::AppendOpenedText(WString& out) const {
    const uint32_t before = out.Length();
    for (const Node* node = documents.head; node; node = node->next) {
        if (AppendOpened(out, *node->document)) continue;
        out.Truncate(before);
        return false;
    }
    return true;
}

// A binary document gets no line and no line break: the next name follows it directly.
// Odd on purpose: docs/oddities.md.
bool DocumentList::AppendOpened(WString& out, const Document& document) {
    if (!out.Append(document.GetName())) return false;
    if (document.IsBinary()) return true;
    ViewNode* next = nullptr;
    // All views of a text are text views.
    const auto* const view = static_cast<const TextDocumentView*>(document.EnumViews(nullptr, next));
    return Text::AppendFormat(out, u"(%u)\n", view ? view->CaretLine() + 1 : 1);
}

// Whether each of the documents is in both orders once, linked in both directions.
bool DocumentList::HasBothOrders() const {
    uint32_t opened = 0;
    uint32_t used = 0;
    for (const Node* node = documents.head; node; node = node->next) ++opened;
    const Node* before = nullptr;
    for (const Node* node = mostRecent; node; before = node, node = node->nextInMru, ++used)
        if (node->previousInMru != before || used == count) return false;
    return opened == count && used == count && leastRecent == before;
}

DocumentList::Node* DocumentList::Find(const Document* document) const {
    Node* node = documents.head;
    while (node && node->document != document) node = node->next;
    return node;
}

void DocumentList::LinkLeastRecent(Node* node) {
    node->previousInMru = leastRecent;
    (leastRecent ? leastRecent->nextInMru : mostRecent) = node;
    leastRecent = node;
}

void DocumentList::LinkMostRecent(Node* node) {
    node->nextInMru = mostRecent;
    (mostRecent ? mostRecent->previousInMru : leastRecent) = node;
    mostRecent = node;
}

void DocumentList::UnlinkUse(Node* node) {
    (node->previousInMru ? node->previousInMru->nextInMru : mostRecent) = node->nextInMru;
    (node->nextInMru ? node->nextInMru->previousInMru : leastRecent) = node->previousInMru;
    node->previousInMru = node->nextInMru = nullptr;
}
