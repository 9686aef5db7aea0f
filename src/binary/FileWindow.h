#pragma once

#include "base/Platform.h"
#include "base/Types.h"

constexpr uint32_t PageSize = 16384;

// A file of any size, open as long as this is, and the stretch of it that is held in memory.
class FileWindow {
public:
    static constexpr uint32_t Capacity = 2 * PageSize;
    // Bytes that fit in front of the window: what a search takes along when the window moves on.
    static constexpr uint32_t Room = 4096;
    static constexpr uint32_t CacheLine = 64;

    FileWindow() = default;
    ~FileWindow() { Close(); }
    FileWindow(const FileWindow&) = delete;
    FileWindow& operator=(const FileWindow&) = delete;

    // Opens a file, for reading only when it cannot be written. On failure it is closed.
    [[nodiscard]] bool Open(const Char* fileName);
    void Close();
    bool IsOpen() const { return file.IsOpen(); }
    bool IsReadOnly() const { return readOnly; }
    // As it was when the file was opened.
    uint64_t Size() const { return size; }
    // Whether the file still is what was opened, under that name and no shorter, so that writing changes nothing
    // but the bytes that are meant.
    [[nodiscard]] bool MayBeWritten(const Char* fileName);
    // Of the file's last write. On failure false, and `time` as it was.
    bool GetTime(Platform::FileTime& time) { return file.GetTime(time); }
    // How many bytes of the file the page that starts there has.
    uint32_t PageBytes(uint64_t pageStart) const;

    // Makes the window hold [offset, offset + count), as far as the file goes; `count` is at most Capacity.
    // Bytes that it holds already are not read again. A file that has become shorter is a success, with a
    // window that ends earlier. On failure the window ends with the last byte before those that cannot be read.
    [[nodiscard]] bool Ensure(uint64_t offset, uint32_t count);
    // Moves on to what follows the window, with its last `kept` bytes, at most Room, in front of the new one.
    // False when nothing can be read there.
    [[nodiscard]] bool Advance(uint32_t kept);
    // The next Ensure reads in any case: the file may have been written, or the window used for something else.
    void Forget() { valid = 0; }
    uint8_t* Bytes() { return window; }
    const uint8_t* Bytes() const { return window; }
    uint64_t Start() const { return start; }
    uint32_t Valid() const { return valid; }
    uint64_t End() const { return start + valid; }

    // Reads without the window, as far as the file goes. On failure `read` says how many bytes there are before those
    // that cannot be read.
    [[nodiscard]] bool ReadAt(uint64_t offset, uint8_t* destination, uint32_t count, uint32_t& read);
    // Writing goes on where the last seek or write ended.
    [[nodiscard]] bool SeekTo(uint64_t offset) { return file.Seek(offset); }
    [[nodiscard]] bool Write(const uint8_t* source, uint32_t count) { return file.Write(source, count); }
    [[nodiscard]] bool Flush() { return file.Flush(); }

private:
    [[nodiscard]] bool AllocateWindow();
    [[nodiscard]] bool ReadSectors(uint64_t offset, uint8_t* destination, size_t count, size_t& read);
    bool Holds(uint64_t offset, uint32_t count) const;
    [[nodiscard]] bool Fill(uint64_t newStart);

    Platform::File file;
    uint64_t size = 0;
    bool readOnly = false;
    uint8_t* block = nullptr;
    uint8_t* window = nullptr; // Capacity bytes of the block while a file is open, after Room others
    uint64_t start = 0;
    uint32_t valid = 0;
};
