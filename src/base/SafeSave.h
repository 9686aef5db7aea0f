#pragma once

#include "base/ByteSource.h"
#include "base/Types.h"

// Whether what a file held until now is kept in the recovery folder: the bytes of the last save only.
enum class Replaced { Dropped, Kept };

// Writes bytes over a file in place, so that its links, rights, streams and identity stay, or makes it. Before the file
// is touched all its new bytes are in a copy in the recovery folder, flushed; the copy goes when the file is flushed.
// So at every moment either the old bytes or the complete new ones are in one of the two. Where no copy can be made
// the file is written all the same. False when not every byte arrived. The file is then as it was, or cut where the
// writing has ended; the copy of that one stays until the file is saved at last, or SaveRecovery finds it.
[[nodiscard]] bool SaveSafely(const Char* name, ByteSource& source, Replaced replaced = Replaced::Dropped);

// Leaves to SaveRecovery what failed saves have left: at the end of the program.
void LeaveSaveCopies();
