#include "SampleText.h"

#include "Ratio.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr char CacheName[] = "bench-sample.txt";

std::string ReadFile(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<std::string> HeaderNames() {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::recursive_directory_iterator entry("/usr/include", error), end; entry != end; entry.increment(error)) {
        const std::string extension = entry->path().extension().string();
        const bool isHeader = extension.empty() || extension == ".h" || extension == ".hpp" || extension == ".tcc";
        if (isHeader && entry->is_regular_file(error)) names.push_back(entry->path().string());
    }
    std::sort(names.begin(), names.end()); // directories list in no order of their own
    return names;
}

std::string MakeSample() {
    std::string all;
    for (const std::string& name : HeaderNames()) {
        std::string content = ReadFile(name);
        if (content.find('\0') != std::string::npos) continue;
        content.erase(std::remove(content.begin(), content.end(), '\r'), content.end());
        all += content;
        if (all.size() >= Bench::SampleSize) break;
    }
    Bench::Check(!all.empty(), "no C++ headers under /usr/include");
    // A machine with few headers repeats them.
    while (all.size() < Bench::SampleSize) all += all.substr(0, Bench::SampleSize - all.size());
    all.resize(Bench::SampleSize);
    return all;
}

} // namespace

std::string Bench::ScratchName(const char* name) {
    std::error_code error;
    return (fs::read_symlink("/proc/self/exe", error).parent_path() / name).string();
}

std::u16string Bench::ScratchPath(const char* name) {
    const std::string bytes = ScratchName(name);
    std::u16string path(bytes.begin(), bytes.end());
    std::replace(path.begin(), path.end(), u'/', u'\\');
    return path;
}

void Bench::WriteScratch(const char* name, const void* bytes, size_t size) {
    std::FILE* file = std::fopen(ScratchName(name).c_str(), "wb");
    Check(file, "a file beside the program could not be made");
    const bool written = std::fwrite(bytes, 1, size, file) == size;
    Check(std::fclose(file) == 0 && written, "a file beside the program could not be written");
}

std::string Bench::SampleBytes(size_t size) {
    std::string all = ReadFile(ScratchName(CacheName));
    if (all.size() != SampleSize) {
        all = MakeSample();
        WriteScratch(CacheName, all.data(), all.size());
    }
    all.resize(std::min(size, all.size()));
    return all;
}

std::u16string Bench::SampleCharacters(size_t size) {
    const std::string bytes = SampleBytes(size);
    std::u16string text(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](char byte) { return static_cast<char16_t>(static_cast<unsigned char>(byte)); });
    return text;
}
