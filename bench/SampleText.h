#pragma once

#include "base/Types.h"

#include <string>

// The text that benchmarks work on: C++ text from the system's headers, mostly ASCII, lines ended by
// line feeds, the same in every run on one machine.
namespace Bench {

constexpr size_t SampleSize = 100'000'000;

// `size` bytes of it. The whole sample is made once and kept in a file beside the program.
std::string SampleBytes(size_t size = SampleSize);

// The same widened byte by byte.
std::u16string SampleCharacters(size_t size = SampleSize);

// A path beside the program for a file that a benchmark makes, as the Platform operations take it
// and as the C library does.
std::u16string ScratchPath(const char* name);
std::string ScratchName(const char* name);

// Writes a file for a benchmark; ends the program when that fails.
void WriteScratch(const char* name, const void* bytes, size_t size);

} // namespace Bench
