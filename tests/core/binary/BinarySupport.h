#pragma once

#include "binary/BinaryDocument.h"
#include "support/FakeHexView.h"
#include "support/ScratchFolder.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <string>
#include <vector>

using Bytes = std::vector<uint8_t>;

// Bytes that differ at neighbouring places of a file.
inline std::string Pattern(size_t size, unsigned seed = 1) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& c : bytes) c = static_cast<char>(random());
    return bytes;
}

inline std::string Slice(const std::string& bytes, size_t offset, size_t count) { return bytes.substr(offset, count); }

// A binary document that the test owns, with a file in a folder of its own.
class OpenedFile {
public:
    explicit OpenedFile(const std::string& content) : document(new BinaryDocument(hexServices)) {
        document->AddRef();
        path = folder.Write("file.bin", content);
        EXPECT_TRUE(document->Open(path.c_str()));
    }
    ~OpenedFile() {
        if (document) document->Release();
    }
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;

    BinaryDocument* operator->() const { return document; }
    BinaryDocument& operator*() const { return *document; }

    std::string OnDisk() const { return folder.Read("file.bin"); }
    // All of the current content, read in one go.
    std::string Content() const {
        std::string bytes(static_cast<size_t>(document->FileSize()), '\0');
        EXPECT_TRUE(document->ReadBytes(0, reinterpret_cast<uint8_t*>(bytes.data()), bytes.size()));
        return bytes;
    }
    bool Edit(uint64_t offset, const std::string& bytes, HexDocumentView* view = nullptr,
              const HexViewState& state = {}) const {
        return document->EditBytes(offset, reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), view, state);
    }
    bool Save() const { return document->Save(u"elsewhere.bin", Encoding::Utf8, LineEnding::Unix); }

    ScratchFolder folder;
    std::u16string path;

protected:
    BinaryDocument* document;
};

// Counts the calls on files, and makes those in `failing` fail, while it lives.
class FileCalls {
public:
    explicit FileCalls(std::initializer_list<uint64_t> failing = {}) {
        calls = 0;
        failures.assign(failing);
        Platform::SetFileFailureHook([] {
            ++calls;
            for (const uint64_t failure : failures)
                if (failure == calls) return true;
            return false;
        });
    }
    ~FileCalls() { Platform::SetFileFailureHook(nullptr); }
    FileCalls(const FileCalls&) = delete;
    FileCalls& operator=(const FileCalls&) = delete;

    uint64_t Count() const { return calls; }

private:
    static inline uint64_t calls = 0;
    static inline std::vector<uint64_t> failures;
};

// While it lives, bytes [from, to) of every file are what a damaged disk does not deliver.
class Damage {
public:
    Damage(uint64_t from, uint64_t to) { Platform::SetUnreadableBytes(from, to); }
    ~Damage() { Platform::SetUnreadableBytes(0, 0); }
    Damage(const Damage&) = delete;
    Damage& operator=(const Damage&) = delete;
};

// The sizes at which pages and windows end.
constexpr size_t BorderSizes[] = {0, 1, 15, 16, 17, 16383, 16384, 16385, 32767, 32768, 32769, 49152, 50000};
