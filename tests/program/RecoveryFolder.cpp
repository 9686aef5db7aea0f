#include "base/Platform.h"
#include "support/ScratchFolder.h"
#include "support/TestRecovery.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

// Every program of tests has a recovery folder of its own, which is made when the first save needs it.
class OwnRecoveryFolder final : public ::testing::Environment {
public:
    void SetUp() override {
        scratch = std::make_unique<ScratchFolder>();
        path = scratch->Path("Recovery");
        Platform::SetRecoveryFolder(path.c_str());
    }
    void TearDown() override {
        LeaveSaveCopies(); // a folder with open files cannot be removed everywhere
        Platform::SetRecoveryFolder(nullptr);
        scratch.reset();
    }

private:
    std::unique_ptr<ScratchFolder> scratch;
    std::u16string path;
};

[[maybe_unused]] ::testing::Environment* const registered = ::testing::AddGlobalTestEnvironment(new OwnRecoveryFolder);

} // namespace
