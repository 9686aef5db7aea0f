#include "app/OpenFailures.h"

#include "base/TextFormat.h"

#include <utility>

void OpenFailures::Add(const Char* path) {
    if (++count > MaxNames) return;
    // Without memory the message names fewer files.
    if (names.IsEmpty() || names.AppendChar(u'\n')) static_cast<void>(names.Append(path));
}

WString OpenFailures::Take() {
    WString taken(std::move(names));
    // Without memory it does not say how many more there are.
    if (count > MaxNames) static_cast<void>(Text::AppendFormat(taken, u"\n(and %u more)", count - MaxNames));
    count = 0;
    return taken;
}
