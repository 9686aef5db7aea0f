#pragma once

class HexEditor;

// Searching in a hex view; what is looked for is in `findState`.
namespace HexFind {

// Selects the next match of the newest entry of the search history, with the caret at its start. False without one.
bool FindNext(HexEditor& editor, bool backward);

} // namespace HexFind
