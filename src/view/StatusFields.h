#pragma once

#include "base/Types.h"

class ViewHost;

// What a text view says in the status bar.
struct StatusValues {
    uint32_t line = None32; // 0-based
    uint32_t column = None32;
    uint32_t overwrite = None32;  // 1 when typing replaces characters
    uint32_t lineEnding = None32; // a LineEnding, 0 for none known
};

// The fields of the status bar as a text view filled them last: only what changed is sent again.
class StatusFields {
public:
    void Show(ViewHost& host, const StatusValues& values);
    // Another view has written into the fields meanwhile.
    void Forget() { sent = {}; }

private:
    StatusValues sent;
};
