#pragma once

class CommandContext;
class Document;

// Whether a document may be closed: asks about unsaved changes and saves them on request.
[[nodiscard]] bool MayClose(CommandContext& frame, Document& document);

// The same for all documents, in list order. False at the first Cancel or failed save; nothing is to
// be closed then.
[[nodiscard]] bool MayExit(CommandContext& frame);

// Asks about every document whose file another program changed and reloads it or accepts the change.
// A request that comes in while a question is open is dropped.
class ExternalChangePrompt {
public:
    void Run(CommandContext& frame);

private:
    bool running = false;
};
