#pragma once

#include "app/UserPrompt.h"
#include "base/WString.h"

class Document;
class DocumentList;
class SafeSaver;
class SettingsChanges;
enum class RepeatResult : uint32_t;

// What the command language remembers from one line to the next. Nothing of it is saved.
struct CommandState {
    // External commands write into the one shared output document, and the command window stays open.
    bool console = false;
    WString sessionFile; // full path; set by the sessionfile command only
    // Full path of the innermost script that runs; after the outermost has ended, still of that one.
    WString runningScript;
    uint32_t scriptDepth = 0;
    // Set when scripts were nested too deeply: every running one ends, then it is cleared.
    bool scriptsCancelled = false;
};

// What the command language, scripts, the command line and the file prompts need of the frame. The
// frame implements it; tests use a fake. Operations on the active document do nothing when there is
// no active pane.
class CommandContext : public UserPrompt {
public:
    CommandState commands;

    // Documents. `path` is as the user gave it; it need not be absolute. `line` is 0-based, NoLine for none.
    virtual const DocumentList& Documents() const = 0;
    virtual bool OpenText(const Char* path, uint32_t line, bool isNew) = 0;
    virtual bool OpenBinary(const Char* path) = 0;
    // Makes an untitled document and shows it.
    virtual void NewDocument() = 0;
    // Saves as the Save command does; false when it failed or its dialog was cancelled.
    virtual bool SaveDocument(Document& document) = 0;
    // Of all files that the program writes.
    virtual SafeSaver& Saver() = 0;
    // Brackets a run of opens and commands; they nest. What only the screen needs may wait for the last End.
    virtual void BeginBatch() = 0;
    virtual void EndBatch() = 0;

    // The active document.
    virtual const Char* ActiveDocumentName() const = 0;       // null without an active pane
    virtual void SetActiveEngine(const Char* engineName) = 0; // an unknown name does nothing
    virtual void MarkActiveAsOutput() = 0;
    virtual void GoToLine(uint32_t line) = 0;       // 0-based
    virtual void ToggleBookmark(uint32_t line) = 0; // 0-based; NoLine is the caret's line
    // Append to `out`; false only without memory. Without a word (or selection) nothing is appended.
    virtual bool AppendWordAtCaret(WString& out) const = 0;
    virtual bool AppendSelection(WString& out) const = 0; // empty selection: the word at the caret

    // Plays the current macro into the active pane's view; see MacroPlayer.
    virtual RepeatResult RepeatMacro(uint32_t count) = 0;

    // The shared output document: emptied if it exists; made if needed, shown and appended to.
    virtual void ClearOutput() = 0;
    virtual bool AppendOutput(const Char* text) = 0;
    // Runs a command whose output is collected; both texts may contain tool variables. An empty
    // directory is the current one. False when the run was not started.
    virtual bool RunCapturedCommand(const Char* command, const Char* startDirectory) = 0;

    // The command language: executes a file line by line; see CommandLanguage.h.
    virtual void RunScript(const Char* file) = 0;

    // The command window.
    virtual void SetCommandText(const Char* text) = 0;
    virtual void HideCommandWindow() = 0;

    // The frame.
    virtual void LayOut() = 0;
    virtual void RefreshTitle() = 0;
    virtual void RefreshStatus() = 0; // the message field, and with it a message shown there
    // After settings have changed.
    virtual void ReapplySettings(const SettingsChanges& changes) = 0;
    virtual void ReloadOptions() = 0;
    virtual void PostClose() = 0;   // leave, with the save prompts
    virtual void PostQuitNow() = 0; // leave without them

protected:
    ~CommandContext() = default;
};
