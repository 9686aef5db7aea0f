#pragma once

#include <cstdio>

namespace Bench {

// The bytes of a line of the system's report on this process, which counts in KB.
inline size_t ReportedBytes(const char* format) {
    std::FILE* const report = std::fopen("/proc/self/status", "r");
    size_t kilobytes = 0;
    char line[256];
    while (report && std::fgets(line, sizeof(line), report) && std::sscanf(line, format, &kilobytes) != 1) {
    }
    if (report) std::fclose(report);
    return kilobytes * 1024;
}

// The most memory that the process has had since RestartPeak, which returns what it has now.
inline size_t PeakBytes() { return ReportedBytes("VmHWM: %zu"); }
inline size_t RestartPeak() {
    std::FILE* const request = std::fopen("/proc/self/clear_refs", "w");
    if (request) {
        std::fputs("5", request);
        std::fclose(request);
    }
    return ReportedBytes("VmRSS: %zu");
}

} // namespace Bench
