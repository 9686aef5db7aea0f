#pragma once

#include <cstdint>
#include <filesystem>

// Gives a file a size for which the disk need not have room: what is added takes none until it is written. False
// when the file system cannot do that.
bool ResizeSparsely(const std::filesystem::path& path, uint64_t size);
