#pragma once

#include "app/CommandContext.h"

struct FrameParts;

// Lets the command language act on the frame: passes on what it asks for to the part that does it.
class FrameCommands final : public CommandContext {
public:
    explicit FrameCommands(FrameParts& allParts) : parts(allParts) {}
    FrameCommands(const FrameCommands&) = delete;
    FrameCommands& operator=(const FrameCommands&) = delete;

    const DocumentList& Documents() const override;
    bool OpenText(const Char* path, uint32_t line, bool isNew) override;
    bool OpenBinary(const Char* path) override;
    void NewDocument() override;
    bool SaveDocument(Document& document) override;
    SafeSaver& Saver() override;
    void BeginBatch() override;
    void EndBatch() override;
    const Char* ActiveDocumentName() const override;
    void SetActiveEngine(const Char* engineName) override;
    void MarkActiveAsOutput() override;
    void GoToLine(uint32_t line) override;
    void ToggleBookmark(uint32_t line) override;
    bool AppendWordAtCaret(WString& out) const override;
    bool AppendSelection(WString& out) const override;
    RepeatResult RepeatMacro(uint32_t count) override;
    void ClearOutput() override;
    bool AppendOutput(const Char* text) override;
    bool RunCapturedCommand(const Char* command, const Char* startDirectory) override;
    void RunScript(const Char* file) override;
    void SetCommandText(const Char* text) override;
    void HideCommandWindow() override;
    void LayOut() override;
    void RefreshTitle() override;
    void RefreshStatus() override;
    void ReapplySettings(const SettingsChanges& changes) override;
    void ReloadOptions() override;
    void PostClose() override;
    void PostQuitNow() override;
    Answer AskUser(const Char* text, MessageKind kind) override;

private:
    FrameParts& parts;
};
