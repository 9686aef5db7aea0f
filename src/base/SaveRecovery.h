#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/Platform.h"
#include "base/RecoveryFolder.h"
#include "base/WString.h"

// What interrupted saves of editors that no longer run have left in the recovery folder. Looked for at start; the
// copies of running editors are left alone.
class SaveRecovery {
public:
    static constexpr uint32_t MaxFound = 5;

    SaveRecovery() = default;
    ~SaveRecovery();
    SaveRecovery(const SaveRecovery&) = delete;
    SaveRecovery& operator=(const SaveRecovery&) = delete;

    // Finds the copies whose file does not hold their bytes, and puts those into files that the user can open, in the
    // recovery folder. Removes the other copies: nobody needs them. What cannot be read now is left for the next time.
    // Looks for no more once MaxFound are found: a message box leaves lines out when there are many, and what it leaves
    // out would never be reported.
    void Look(RecoveryFolder& folder);
    bool IsEmpty() const { return found.IsEmpty(); }
    // Appends what the user is to know, for all that was found. False without memory.
    [[nodiscard]] bool AppendMessage(WString& out) const;
    // The user knows: the next start does not report it again. The files with the bytes stay.
    void Forget();

private:
    struct Found : HeapObject {
        Platform::File file; // held until it is forgotten, so that no other start tells the same
        WString copy;
        WString target;
        WString bytes; // where they are: the copy itself when there was no room for a file of their own
        Found* next = nullptr;
        Found* previous = nullptr;
    };

    void LookAt(RecoveryFolder& folder, const Char* copy);

    List<Found> found;
    uint32_t foundCount = 0;
};
