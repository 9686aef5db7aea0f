#pragma once

// What an editor does with the journals of its documents. Off at first: nothing is written then.
class JournalPolicy {
public:
    // Documents keep journals from now on.
    void Keep() { areKept = true; }
    bool AreKept() const { return areKept; }
    // From now on what could not be written is tried again at once, because there may be no later time.
    void Hurry() { areUrgent = true; }
    bool AreUrgent() const { return areUrgent; }
    // From now on journals are kept for the next start, because the program must end with changes that nobody has
    // decided about.
    void Leave() { areLeft = true; }
    bool AreLeft() const { return areLeft; }

private:
    bool areKept = false;
    bool areUrgent = false;
    bool areLeft = false;
};
