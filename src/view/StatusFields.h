#pragma once

#include "document/Encoding.h"
#include "document/TextPosition.h"

class ViewHost;

// What a text view says in the status bar.
struct StatusValues {
    TextPosition caret;
    bool overwrite = false; // typing replaces characters
    LineEnding lineEnding = LineEnding::None;
};

// The fields of the status bar as a text view filled them last: only what changed is sent again.
class StatusFields {
public:
    void Show(ViewHost& host, const StatusValues& values);
    // Another view has written into the fields meanwhile.
    void Forget() { sent = {}; }

private:
    // The value that each field shows.
    struct Sent {
        static constexpr uint32_t Unknown = UINT32_MAX;

        uint32_t line = Unknown;
        uint32_t column = Unknown;
        uint32_t overwrite = Unknown;
        uint32_t lineEnding = Unknown;
    };

    Sent sent;
};
