#include "core/document/RunSupport.h"

#ifdef _WIN32
#include "base/win32/Windows.h"
#else
#include <unistd.h>
#endif

void RunTest::Print(TextBuffer& document, const std::string& bytes) {
    const intptr_t output = TextBufferProbe::Run(document).outputWrite;
#ifdef _WIN32
    DWORD written = 0;
    WriteFile(reinterpret_cast<HANDLE>(output), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
#else
    const ssize_t written = write(static_cast<int>(output), bytes.data(), bytes.size());
#endif
    ASSERT_EQ(static_cast<size_t>(written), bytes.size());
}

void RunTest::MoveTo(TextBuffer& document, uint64_t position) {
    const intptr_t output = TextBufferProbe::Run(document).outputWrite;
#ifdef _WIN32
    LARGE_INTEGER place;
    place.QuadPart = static_cast<LONGLONG>(position);
    ASSERT_TRUE(SetFilePointerEx(reinterpret_cast<HANDLE>(output), place, nullptr, FILE_BEGIN));
#else
    ASSERT_NE(lseek(static_cast<int>(output), static_cast<off_t>(position), SEEK_SET), -1);
#endif
}
