#pragma once

#include "app/CommandContext.h"
#include "app/CommandLanguage.h"
#include "app/DocumentList.h"
#include "app/MacroPlayer.h"
#include "core/app/FakeDocument.h"
#include "settings/Settings.h"
#include "support/TestRecovery.h"

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

inline std::u16string Str(const Char* text) { return text ? text : u"(null)"; }
inline std::u16string Str(const WString& text) { return {text.Text(), text.Length()}; }
inline std::u16string Decimal(int64_t value) {
    const std::string digits = std::to_string(value);
    return {digits.begin(), digits.end()};
}

using Calls = std::vector<std::u16string>;

// A frame without windows that records, in words, what it is asked to do.
class FakeFrame final : public CommandContext {
public:
    struct Question {
        std::u16string text;
        MessageKind kind;
    };

    const DocumentList& Documents() const override { return documents; }
    bool OpenText(const Char* path, uint32_t line, bool isNew) override {
        Note(u"text " + Str(path) + (line == NoLine ? u"" : u" at " + Decimal(line)) + (isNew ? u" new" : u""));
        return Opened(path);
    }
    bool OpenBinary(const Char* path) override {
        Note(u"binary " + Str(path));
        return Opened(path);
    }
    void NewDocument() override {
        Note(u"new document");
        Offer(FakeDocument::WithTitle(u"Untitled1"));
    }
    bool SaveDocument(Document& document) override {
        Note(u"save " + Str(document.GetName()));
        return savingWorks;
    }
    SafeSaver& Saver() override { return recoveryServices.saver; }
    void BeginBatch() override { ++batchDepth; }
    void EndBatch() override { --batchDepth; }

    const Char* ActiveDocumentName() const override { return hasPane ? activeName.c_str() : nullptr; }
    void SetActiveEngine(const Char* name) override { Note(u"engine " + Str(name)); }
    void MarkActiveAsOutput() override { Note(u"mark output"); }
    void GoToLine(uint32_t line) override { Note(u"line " + Decimal(line)); }
    void ToggleBookmark(uint32_t line) override {
        Note(line == NoLine ? u"bookmark caret" : u"bookmark " + Decimal(line));
    }
    bool AppendWordAtCaret(WString& out) const override { return out.Append(word.c_str()); }
    bool AppendSelection(WString& out) const override {
        return out.Append(selection.empty() ? word.c_str() : selection.c_str());
    }

    RepeatResult RepeatMacro(uint32_t count) override {
        Note(u"repeat " + Decimal(count));
        return repeatResult;
    }

    void ClearOutput() override { Note(u"clear output"); }
    bool AppendOutput(const Char* text) override {
        Note(u"output " + Str(text));
        return true;
    }
    bool RunCapturedCommand(const Char* command, const Char* startDirectory) override {
        Note(u"external [" + Str(command) + u"]" + (*startDirectory ? u" in " + Str(startDirectory) : u""));
        return true;
    }

    void RunScript(const Char* file) override { ::RunScript(*this, file); }
    void SetCommandText(const Char* text) override { commandText = text; }
    void HideCommandWindow() override { ++hides; }

    void LayOut() override { ++layouts; }
    void RefreshTitle() override { ++titles; }
    void RefreshStatus() override { ++statuses; }
    void ReapplySettings(const SettingsChanges& changes) override {
        Note(changes.HoldsColour() ? u"apply colours" : u"apply settings");
    }
    void ReloadOptions() override { Note(u"reload options"); }
    void PostClose() override { Note(u"close"); }
    void PostQuitNow() override { Note(u"quit now"); }
    Answer AskUser(const Char* text, MessageKind kind) override {
        questions.push_back({text, kind});
        if (whileAsking) whileAsking();
        if (answers.empty()) return defaultAnswer;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    FakeDocument& Add(FakeDocument* document) {
        if (!documents.Add(document)) abort();
        return *document;
    }
    // The calls since the last time this was asked.
    Calls TakeCalls() { return std::exchange(calls, {}); }

    DocumentList documents;
    Calls calls;
    std::vector<Question> questions;
    std::deque<Answer> answers;
    Answer defaultAnswer = Answer::Cancel;
    std::function<void()> whileAsking;
    std::u16string commandText = u"(untouched)";
    std::u16string activeName;
    std::u16string word;
    std::u16string selection;
    bool hasPane = true;
    bool savingWorks = true;
    RepeatResult repeatResult = RepeatResult::Played;
    std::u16string failingName; // what ends with it cannot be opened
    bool addsDocuments = false; // an open puts a document into the list
    int batchDepth = 0;
    int opensOutsideBatch = 0;
    int hides = 0;
    int titles = 0;
    int statuses = 0;
    int layouts = 0;

private:
    void Note(const std::u16string& call) { calls.push_back(call); }
    void Offer(FakeDocument* document) {
        if (!documents.Add(document)) document->Release();
    }
    bool Opened(const std::u16string& path) {
        if (batchDepth == 0) ++opensOutsideBatch;
        if (!failingName.empty() && path.ends_with(failingName)) return false;
        if (addsDocuments) Offer(FakeDocument::WithFile(path));
        return true;
    }
};

// Works in a directory until the end of its scope.
class InDirectory {
public:
    explicit InDirectory(const std::filesystem::path& directory) : before(std::filesystem::current_path()) {
        std::filesystem::current_path(directory);
    }
    ~InDirectory() { std::filesystem::current_path(before); }
    InDirectory(const InDirectory&) = delete;
    InDirectory& operator=(const InDirectory&) = delete;

private:
    std::filesystem::path before;
};
