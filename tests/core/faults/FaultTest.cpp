#include "FaultTest.h"

#include "base/PreviousFile.h"

std::u16string FaultTest::PreviousPath() {
    WString path;
    EXPECT_TRUE(PreviousFilePath(recoveryServices.folder, Target, path));
    return path.Text();
}
