#pragma once

class UserPrompt;

// At start: tells which files an editor that did not come to its end was saving, and where their new bytes are.
void TellIncompleteSaves(UserPrompt& user);
