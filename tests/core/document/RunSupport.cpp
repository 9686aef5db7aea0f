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
