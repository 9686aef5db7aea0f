#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

// The rules of a text document in their plainest form: one string with the text as the user sees it, lines
// found by walking it, and every record on a vector. Views are named by their address.
class TextModel {
public:
    using Key = const void*;

    struct View {
        uint32_t line = 0;
        uint32_t column = 0;
        uint32_t anchor = 0;
        uint32_t caret = 0;
        uint32_t top = 0;
        bool operator==(const View&) const = default;
    };
    struct State {
        View before;
        uint32_t topAfter = 0;
    };
    struct Record {
        enum Kind { Begin, End, Edit } kind = Edit;
        bool isDelete = false;
        bool pending = false;
        bool closed = false;
        char16_t replaced = 0;
        std::u16string text;
        uint32_t position = 0;
        uint32_t newLines = 0;
        std::map<Key, State> views;
        uint64_t id = 0;
    };

    explicit TextModel(std::u16string initial) : text(std::move(initial)) {}

    // Lines.
    uint32_t LineCount() const { return 1 + LineFeeds(text); }
    uint32_t LineStart(uint32_t line) const {
        size_t start = 0;
        for (; line > 0; --line) {
            const size_t lineFeed = text.find(u'\n', start);
            if (lineFeed == std::u16string::npos) break;
            start = lineFeed + 1;
        }
        return static_cast<uint32_t>(start);
    }
    uint32_t LineOf(uint32_t offset) const { return LineFeeds(text.substr(0, offset)); }
    std::u16string Line(uint32_t line) const {
        const size_t start = LineStart(line);
        return text.substr(start, text.find(u'\n', start) - start);
    }

    // Views.
    void MoveCaret(Key key, uint32_t line, uint32_t column) {
        View& view = views[key];
        view.line = std::min(line, LineCount() - 1);
        if (key == active) LeaveLine(view.line);
        view.column = std::min(column, static_cast<uint32_t>(Line(view.line).size()));
        view.anchor = view.caret = LineStart(view.line) + view.column;
    }
    void SelectRange(Key key, uint32_t anchor, uint32_t caret) {
        const auto end = static_cast<uint32_t>(text.size());
        View& view = views[key];
        view.anchor = std::min(anchor, end);
        view.caret = std::min(caret, end);
        view.line = LineOf(view.caret);
        view.column = view.caret - LineStart(view.line);
    }
    void Activate(Key key) {
        active = key;
        LeaveLine(views[key].line);
    }
    void Forget(Key key) {
        views.erase(key);
        if (active == key) active = nullptr;
    }

    // Editing; `key` is the active view.
    void Type(Key key, char16_t ch, bool overwrite) {
        View& view = views[key];
        const uint32_t column = ColumnOf(view);
        Record* head = undo.empty() ? nullptr : &undo.back();
        if (!overwrite && head && head->kind == Record::Edit && head->pending && !head->closed && !head->isDelete &&
            !head->replaced && head->position + head->text.size() == LineStart(view.line) + column &&
            IsWord(head->text.back()) == IsWord(ch)) {
            text.insert(LineStart(view.line) + column, 1, ch);
            head->text += ch;
            redo.clear();
            for (auto& [each, place] : views) {
                if (each != key) Follow(place, LineStart(view.line) + column, u"", std::u16string(1, ch));
            }
            MoveCaret(key, view.line, column + 1);
            return;
        }
        Record record = LineRecord(view, column, std::u16string(1, ch), false);
        if (overwrite && column < Line(view.line).size()) record.replaced = text[record.position];
        ApplyText(record, false);
        for (auto& [each, place] : views) MoveCaret(each, place.line, column + 1);
        Push(std::move(record));
    }
    void NewLine(Key key) {
        const View view = views[key];
        const std::u16string line = Line(view.line);
        const uint32_t column = ColumnOf(view);
        const std::u16string rest = line.substr(column);
        const bool blanks = !rest.empty() && rest.find_first_not_of(u" \t") == std::u16string::npos;
        const size_t indent = std::min<size_t>(std::min(line.find_first_not_of(u" \t"), line.size()), column);
        const uint32_t offset = LineStart(view.line) + column;
        if (blanks) {
            PushMarker(Record::Begin);
            DeleteInLine(key, column, static_cast<uint32_t>(rest.size()));
        }
        Insert(offset, u"\n" + line.substr(0, indent));
        if (blanks) PushMarker(Record::End);
    }
    bool DeleteInLine(Key key, uint32_t column, uint32_t count) {
        const View view = views[key];
        const auto size = static_cast<uint32_t>(Line(view.line).size());
        if (view.line + 1 < LineCount() && column <= size) {
            Delete(LineStart(view.line) + column, count);
            return true;
        }
        if (column >= size || count == 0) return false;
        count = std::min(count, size - column);
        Record record = LineRecord(view, column, Line(view.line).substr(column, count), true);
        ApplyText(record, false);
        for (auto& [each, place] : views) Follow(place, record, false);
        Push(std::move(record));
        return true;
    }
    void Insert(uint32_t offset, const std::u16string& inserted) { StoreEdit(offset, inserted, false); }
    void Delete(uint32_t offset, uint32_t count) {
        Commit();
        offset = std::min(offset, static_cast<uint32_t>(text.size()));
        StoreEdit(offset, text.substr(offset, count), true);
    }
    void Commit() {
        for (auto* list : {&undo, &redo}) {
            for (auto record = list->rbegin(); record != list->rend(); ++record) {
                if (record->kind == Record::Edit && !record->pending) break;
                record->pending = false;
            }
        }
    }
    void EndTyping() {
        if (!undo.empty() && undo.back().pending) undo.back().closed = true;
    }

    // Steps.
    void PushMarker(Record::Kind kind) {
        if (kind == Record::Begin && groups == 0) redoBeforeGroup = redo;
        groups += kind == Record::Begin ? 1 : -1;
        Record marker;
        marker.kind = kind;
        marker.id = ++lastId;
        undo.push_back(std::move(marker));
    }
    void Undo() { Step(undo, redo, true); }
    void Redo() { Step(redo, undo, false); }
    void AbandonGroup() {
        int depth = 1;
        while (depth > 0) {
            Record record = std::move(undo.back());
            if (record.kind == Record::End) ++depth;
            if (record.kind == Record::Begin) --depth;
            if (record.kind == Record::Edit) TakeBack(record);
            undo.pop_back();
        }
        if (--groups == 0) redo = redoBeforeGroup;
        Commit();
    }
    void Save() {
        Commit();
        savedId = HeadId();
    }
    bool IsModified() const { return HeadId() != savedId; }

    std::u16string text;
    std::map<Key, View> views;
    std::set<uint32_t> marks;
    std::vector<Record> undo;
    std::vector<Record> redo;
    std::vector<Record> redoBeforeGroup;
    int groups = 0;
    Key active = nullptr;

private:
    static bool IsWord(char16_t c) {
        static const std::u16string words = u"0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_#";
        return words.find(c) != std::u16string::npos;
    }
    static uint32_t LineFeeds(const std::u16string& of) {
        return static_cast<uint32_t>(std::count(of.begin(), of.end(), u'\n'));
    }
    // A deletion elsewhere in the line may have left the caret past its end.
    uint32_t ColumnOf(const View& view) const {
        return std::min(view.column, static_cast<uint32_t>(Line(view.line).size()));
    }
    uint64_t HeadId() const { return undo.empty() ? 0 : undo.back().id; }

    // The active view's caret is on `line` now; what was typed in another one is written back.
    void LeaveLine(uint32_t line) {
        if (line != pendingLine) Commit();
    }
    Record LineRecord(const View& view, uint32_t column, const std::u16string& changed, bool isDelete) {
        pendingLine = view.line;
        Record record = NewRecord(LineStart(view.line) + column, changed, isDelete);
        record.pending = true;
        return record;
    }
    Record NewRecord(uint32_t position, const std::u16string& changed, bool isDelete) {
        Record record;
        record.isDelete = isDelete;
        record.text = changed;
        record.position = position;
        record.newLines = LineFeeds(changed);
        record.id = ++lastId;
        const size_t end = position + changed.size();
        for (auto& [key, view] : views) {
            State state{view, view.top};
            const uint32_t topStart = LineStart(view.top);
            if (topStart >= end) {
                if (!isDelete) state.topAfter += record.newLines;
                if (isDelete) state.topAfter -= std::min(record.newLines, view.top);
            } else if (topStart >= position) {
                state.topAfter = LineOf(position);
            }
            record.views[key] = state;
        }
        return record;
    }
    void ApplyText(const Record& record, bool back) {
        if (record.replaced) {
            text[record.position] = back ? record.replaced : record.text[0];
        } else if (back == record.isDelete) {
            text.insert(record.position, record.text);
        } else {
            text.erase(record.position, record.text.size());
        }
    }
    // Keeps a view at its place in the text, which has changed already.
    void Follow(View& view, const Record& record, bool back) {
        const std::u16string none;
        if (record.replaced) return Follow(view, record.position, u"x", u"x");
        const bool removes = record.isDelete != back;
        Follow(view, record.position, removes ? record.text : none, removes ? none : record.text);
    }
    void Follow(View& view, uint32_t start, const std::u16string& removed, const std::u16string& added) {
        const auto move = [](uint32_t at, uint32_t from, size_t less, size_t more) {
            const auto within = static_cast<uint32_t>(from + std::min<size_t>(at - from, more));
            return at <= from ? at : at >= from + less ? static_cast<uint32_t>(at - less + more) : within;
        };
        view.top = move(view.top, LineOf(start), LineFeeds(removed), LineFeeds(added));
        view.anchor = move(view.anchor, start, removed.size(), added.size());
        view.caret = move(view.caret, start, removed.size(), added.size());
        view.line = LineOf(view.caret);
        view.column = view.caret - LineStart(view.line);
    }
    void StoreEdit(uint32_t offset, const std::u16string& changed, bool isDelete) {
        Commit();
        if (changed.empty()) return;
        Record record = NewRecord(offset, changed, isDelete);
        DoForwards(record);
        Push(std::move(record));
    }
    void Push(Record record) {
        undo.push_back(std::move(record));
        redo.clear();
    }
    void DoForwards(const Record& record) {
        ApplyText(record, false);
        const auto size = static_cast<uint32_t>(record.text.size());
        const uint32_t caret = record.isDelete ? record.position : record.position + size;
        for (auto& [key, view] : views) {
            const auto state = record.views.find(key);
            if (state == record.views.end()) {
                Follow(view, record, false);
                continue;
            }
            view.top = state->second.topAfter;
            SelectRange(key, caret, caret);
        }
        if (record.newLines == 0) return;
        const uint32_t line = LineOf(record.position);
        std::set<uint32_t> moved;
        for (uint32_t mark : marks) {
            if (mark <= line) moved.insert(mark);
            if (mark > line && !record.isDelete) moved.insert(mark + record.newLines);
            if (mark > line + record.newLines && record.isDelete) moved.insert(mark - record.newLines);
        }
        marks = moved;
    }
    void DoBackwards(const Record& record) {
        ApplyText(record, true);
        for (auto& [key, view] : views) {
            const auto state = record.views.find(key);
            if (state == record.views.end()) {
                Follow(view, record, true);
                continue;
            }
            view.top = state->second.before.top;
            SelectRange(key, state->second.before.anchor, state->second.before.caret);
        }
        if (record.newLines == 0) return;
        const uint32_t line = LineOf(record.position);
        std::set<uint32_t> moved;
        for (uint32_t mark : marks) {
            const uint32_t back = mark > record.newLines ? mark - record.newLines : 0;
            moved.insert(mark <= line ? mark : record.isDelete ? mark + record.newLines : back);
        }
        marks = moved;
    }
    // As DoBackwards; what was typed last is taken back in the edit line, which moves only the carets.
    void TakeBack(const Record& record) {
        if (!record.pending) return DoBackwards(record);
        ApplyText(record, true);
        if (record.isDelete) {
            for (auto& [each, place] : views) Follow(place, record, true);
            return;
        }
        const uint32_t column = record.position - LineStart(pendingLine);
        for (auto& [each, place] : views) MoveCaret(each, place.line, column);
    }
    void Step(std::vector<Record>& from, std::vector<Record>& to, bool undoing) {
        Commit();
        int depth = 0;
        while (!from.empty()) {
            Record record = std::move(from.back());
            from.pop_back();
            if (record.kind == Record::End) depth += undoing ? 1 : -1;
            if (record.kind == Record::Begin) depth += undoing ? -1 : 1;
            if (record.kind == Record::Edit) undoing ? DoBackwards(record) : DoForwards(record);
            to.push_back(std::move(record));
            if (depth == 0) break;
        }
    }

    uint32_t pendingLine = 0;
    uint64_t lastId = 0;
    uint64_t savedId = 0;
};
