#pragma once

#include "base/Text.h"
#include "settings/IniFile.h"
#include "settings/LineReader.h"
#include "settings/SetOptionCommand.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

// Names and values of a model, for comparing whole models at once.
using KeyList = std::vector<std::pair<std::u16string, std::u16string>>;
using Model = std::vector<std::pair<std::u16string, KeyList>>;

inline std::u16string Str(const WString& text) { return {text.Text(), text.Length()}; }
inline std::u16string Str(const Char* text) { return text ? text : u"(null)"; }

// Walks the lists in both directions, so that a wrong link of either kind shows.
inline Model ModelOf(const IniFile& file) {
    Model model;
    const IniSection* previousSection = nullptr;
    for (const IniSection* section = file.sections.head; section; section = section->next) {
        EXPECT_EQ(section->previous, previousSection);
        previousSection = section;
        KeyList keys;
        const IniKey* previousKey = nullptr;
        for (const IniKey* key = section->keys.head; key; key = key->next) {
            EXPECT_EQ(key->previous, previousKey);
            previousKey = key;
            keys.emplace_back(Str(key->name), Str(key->value));
        }
        EXPECT_EQ(section->keys.tail, previousKey);
        model.emplace_back(Str(section->name), keys);
    }
    EXPECT_EQ(file.sections.tail, previousSection);
    return model;
}

inline bool ParseText(IniFile& file, std::u16string text) { return file.Parse(text.data()); }

inline std::u16string Serialised(const IniFile& file) {
    WString text;
    EXPECT_TRUE(file.Serialise(text));
    return Str(text);
}

// Where the live value of a row is.
inline const void* LiveCell(const SettingDef& row) {
    if (row.type == SettingType::String) return &(settings.*row.cell.string);
    return &(settings.*row.cell.number);
}

// A file in the system's temporary directory, removed at the end of the test.
class TemporaryFile {
public:
    TemporaryFile() {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        path = std::filesystem::temp_directory_path() /
               (std::string("orvane-") + test->test_suite_name() + "-" + test->name() + ".ini");
        std::filesystem::remove(path);
        name = path.u16string();
        for (Char& c : name) {
            if (c == u'/') c = u'\\';
        }
    }
    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const Char* Name() const { return name.c_str(); }
    bool Exists() const { return std::filesystem::exists(path); }
    void Write(const std::string& bytes) const { std::ofstream(path, std::ios::binary) << bytes; }
    std::string Read() const {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path path;
    std::u16string name;
};

// Starts every test with the settings of an empty file, and frees them at its end.
class SettingsTest : public ::testing::Test {
public:
    // What these tests have in the place of the drawing half (FakeDrawing.cpp). It records, unless a test puts another
    // one there.
    static inline bool (*rebuild)(DrawingResource change) = nullptr;

protected:
    void SetUp() override {
        rebuild = Record;
        LoadSettings(IniFile());
        changes.clear();
    }
    void TearDown() override {
        rebuild = nullptr;
        ReleaseSettings();
    }

    // What the change handlers asked for, in order.
    static inline std::vector<DrawingResource> changes;

private:
    static bool Record(DrawingResource change) {
        changes.push_back(change);
        return true;
    }
};
