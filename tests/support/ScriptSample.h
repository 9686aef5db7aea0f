#pragma once

#include "support/PlainEncoding.h"
#include "support/SourceTree.h"

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// A line of tests/samples/scripts.txt: the name of a script, how many code units each character of the text has, and
// the text.
struct ScriptLine {
    std::string name;
    std::vector<uint32_t> lengths;
    std::u16string text;

    std::u16string First() const { return text.substr(0, lengths.front()); }
    // The columns between its characters, with both ends.
    std::vector<uint32_t> Stops() const {
        std::vector<uint32_t> stops = {0};
        for (const uint32_t length : lengths) stops.push_back(stops.back() + length);
        return stops;
    }
};

inline std::vector<ScriptLine> ReadScriptSample() {
    std::ifstream file(source::Folder() / "tests" / "samples" / "scripts.txt", std::ios::binary);
    std::vector<ScriptLine> lines;
    for (std::string line; std::getline(file, line);) {
        ScriptLine read;
        std::string lengths;
        std::string text;
        std::istringstream fields(line);
        std::getline(fields, read.name, '\t');
        std::getline(fields, lengths, '\t');
        std::getline(fields, text);
        for (const char digit : lengths) read.lengths.push_back(static_cast<uint32_t>(digit - '0'));
        read.text = PlainEncoding::FromUtf8(text);
        lines.push_back(read);
    }
    return lines;
}
