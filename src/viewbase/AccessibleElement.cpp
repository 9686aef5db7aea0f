#include "viewbase/AccessibleElement.h"

#include "base/Checksum.h"
#include "base/Text.h"
#include "document/Document.h"

const Char* AccessibleElement::Name() const {
    const Document* const document = ShownDocument();
    return document ? document->GetName() : u"";
}

uint64_t AccessibleElement::NameSum() const {
    const Char* const name = Name();
    Checksum sum;
    sum.Add(name, size_t{Text::Length(name)} * sizeof(Char));
    return sum.Value();
}
