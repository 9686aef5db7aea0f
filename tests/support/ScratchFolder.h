#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

// A folder of a test's own in the system's place for temporary files; it goes with the object.
class ScratchFolder {
public:
    ScratchFolder() {
        static const unsigned process = std::random_device{}();
        static std::atomic<unsigned> made{0};
        folder = std::filesystem::temp_directory_path() /
                 ("orvane-test-" + std::to_string(process) + "-" + std::to_string(++made));
        std::filesystem::create_directories(folder);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // The path of an entry as the standard library takes it, and as the program writes it.
    std::filesystem::path File(const std::string& name) const { return folder / name; }
    std::u16string Path(const std::string& name) const {
        std::u16string path = File(name).u16string();
        for (char16_t& c : path)
            if (c == u'/') c = u'\\';
        return path;
    }

    // Makes or replaces a file and returns its path.
    std::u16string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(File(name), std::ios::binary) << bytes;
        return Path(name);
    }
    std::string Read(const std::string& name) const {
        std::ifstream file(File(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

private:
    std::filesystem::path folder;
};
