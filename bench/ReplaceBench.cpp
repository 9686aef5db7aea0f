#include "BenchSurface.h"
#include "BytesInUse.h"
#include "SampleDocument.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "view/EditorFind.h"
#include "viewbase/FindState.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

// Replacing all matches, indenting a block and pasting, with their undo and redo, compared with a copy of the
// resulting text into fresh memory.

namespace {

constexpr double Replace = 1.5;
constexpr double ReplaceBack = 0.5;
constexpr double Indent = 0.3;
constexpr double UndoMemory = 12; // bytes a replacement
constexpr double Pasting = 4;     // the text is read, kept for undoing and put in
constexpr uint32_t IndentedLines = 100'000;
constexpr size_t PastedLength = 250'000'000;

bool IsWord(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '#'; }

// The sample with its commonest words made one, so that there are about a million of it.
std::string WithCommonWord(const std::string& sample, const std::string& word, size_t& count) {
    const std::vector<std::string> common = {"#define", "const", "int", "sk", "the", "void", "of", "to"};
    std::string out;
    out.reserve(sample.size() + sample.size() / 50);
    count = 0;
    for (size_t at = 0; at < sample.size();) {
        size_t end = at;
        while (end < sample.size() && IsWord(sample[end])) ++end;
        if (end == at) {
            out += sample[at++];
            continue;
        }
        const std::string token = sample.substr(at, end - at);
        const bool replaced = token == word || std::find(common.begin(), common.end(), token) != common.end();
        count += replaced;
        out += replaced ? word : token;
        at = end;
    }
    return out;
}

struct Copying {
    const TextBuffer& document;
    void operator()() const {
        const size_t bytes = size_t(document.Length()) * sizeof(Char);
        auto* fresh = static_cast<Char*>(malloc(bytes));
        std::memcpy(fresh, document.Content(), bytes);
        Bench::Keep(fresh[bytes / 4]);
        free(fresh);
    }
};

void ReplaceAll(const std::string& original) {
    const std::string word = "item";
    size_t count = 0;
    const std::string sample = WithCommonWord(original, word, count);
    std::printf("replacing a word found %zu times\n", count);
    const std::u16string pattern(word.begin(), word.end());
    const std::u16string longer = pattern + u"Longer";
    Bench::SampleDocument document(sample);
    Bench::ShownDocument shown(*document);
    Bench::Check(findState.searchHistory.Add(pattern.data(), static_cast<uint32_t>(pattern.size())),
                 "the pattern is remembered");
    findState.matchCase = findState.wholeWord = true;

    const auto replace = [&] {
        Bench::Check(EditorFind::ReplaceAll(shown.editor, longer.data(), static_cast<uint32_t>(longer.size()), false),
                     "replacing");
    };
    const auto undo = [&] { static_cast<void>(document->Undo()); };
    const auto redo = [&] { static_cast<void>(document->Redo()); };
    const std::u16string before(document->Content(), document->Length());
    const size_t held = Bench::BytesInUse();
    replace();
    Bench::Check(document->Length() == sample.size() + count * 6, "the replaced text's length");
    // The old words, which undoing brings back, and what the text has grown by: together the new words.
    const size_t texts = count * longer.size() * sizeof(Char);
    const double undoBytes = static_cast<double>(Bench::BytesInUse()) - static_cast<double>(held + texts);
    Bench::Report("undo memory beside the texts, bytes a replacement", undoBytes / static_cast<double>(count),
                  UndoMemory);
    undo();
    Bench::Check(std::equal(before.begin(), before.end(), document->Content()), "the text after undo");
    replace();
    const Copying copying{*document};
    Bench::Compare("replace all", {replace, undo}, {copying, {}}, Replace);
    Bench::Compare("its undo",
                   {undo,
                    [&] {
                        if (!document->CanDo(DocumentCommand::Undo)) static_cast<void>(document->Redo());
                    }},
                   {copying, {}}, ReplaceBack);
    Bench::Compare("its redo",
                   {redo,
                    [&] {
                        if (!document->CanDo(DocumentCommand::Redo)) static_cast<void>(document->Undo());
                    }},
                   {copying, {}}, ReplaceBack);
}

void IndentBlock(const std::string& sample) {
    Bench::SampleDocument document(sample);
    Bench::ShownDocument shown(*document);
    Bench::Check(document->GetLineCount() > IndentedLines, "the sample's lines");
    const uint32_t end = document->LineToOffset(IndentedLines);
    const auto select = [&] { shown.editor.SelectRange({0, end}); };
    const auto indent = [&] { shown.input.OnChar(u'\t'); };
    const auto undo = [&] { static_cast<void>(document->Undo()); };
    select();
    indent();
    Bench::Check(document->Length() > sample.size() + 2 * IndentedLines, "the indented text's length");
    const Copying copying{*document};
    Bench::Compare("indent 100,000 lines",
                   {indent,
                    [&] {
                        undo();
                        select();
                    }},
                   {copying, {}}, Indent);
    Bench::Compare("its undo",
                   {undo,
                    [&] {
                        if (!document->CanDo(DocumentCommand::Undo)) static_cast<void>(document->Redo());
                    }},
                   {copying, {}}, Indent);
}

// A selection is replaced by 500 MB with CR LF.
void Paste(const std::string& sample) {
    std::u16string pasted;
    while (pasted.size() < PastedLength) pasted += u"A line that is pasted, as many others are.\r\n";
    const auto feeds = static_cast<size_t>(std::count(pasted.begin(), pasted.end(), u'\n'));
    Bench::SampleDocument document(sample);
    Bench::ShownDocument shown(*document);
    shown.surface.clipboard = pasted.data();
    shown.surface.clipboardLength = static_cast<int64_t>(pasted.size());
    const uint32_t third = document->Length() / 3;
    const auto paste = [&] { shown.input.ExecuteCommand(ViewCommand::Paste); };
    const auto undo = [&] {
        static_cast<void>(document->Undo());
        shown.editor.SelectRange({third, 2 * third});
    };
    undo();
    paste();
    Bench::Check(document->Length() == sample.size() - third + pasted.size() - feeds, "the pasted text's length");
    const Copying copying{*document};
    Bench::Compare("pasting 500 MB", {paste, undo}, {copying, {}}, Pasting, 3);
}

} // namespace

int main() {
    LoadSettings(IniFile());
    const std::string sample = Bench::SampleBytes();
    ReplaceAll(sample);
    IndentBlock(sample);
    Paste(sample);
    findState.Release();
    return Bench::ExitStatus();
}
