#include "FaultTest.h"

#include "base/Path.h"
#include "base/PreviousFile.h"

std::u16string FaultTest::PreviousName() {
    WString path;
    EXPECT_TRUE(PreviousFilePath(Target, path));
    return Path::FileName(path.Text());
}
