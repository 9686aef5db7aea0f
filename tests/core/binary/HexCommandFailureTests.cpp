// Every command, key and character of a hex view while each allocation fails in turn.

#include "HexViewTest.h"
#include "support/FailureInjection.h"
#include "viewbase/ViewCommand.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

class HexCommandFailureTest : public HexViewTest {
protected:
    void Prepare() {
        Show(original);
        view().GoTo(5);
        Type(u"a1b2");
        Type(u"c3");
        Undo();
        view().GoTo(PageSize - 4);
        for (int i = 0; i < 8; ++i) Shift(ViewKey::Right);
        SetClipboard(u"01 02 03");
        SearchFor(u"12", true);
    }
    // The bytes are as they were or as they are to be, and can be undone to what the file has.
    void FailInTurn(const std::function<void()>& act) {
        Prepare();
        const std::string before = Content();
        act();
        const std::string after = Content();
        failures += FailEachAllocation([&] {
            {
                const FailurePause pause;
                Prepare();
            }
            act();
            const FailurePause pause;
            const std::string now = Content();
            EXPECT_TRUE(now == before || now == after);
            EXPECT_EQ((*file)->IsModified(), now != original);
            while ((*file)->CanDo(DocumentCommand::Undo)) Undo();
            EXPECT_TRUE(Content() == original);
            EXPECT_FALSE((*file)->IsModified());
            return now == after;
        });
    }

    const std::string original = std::string(3 * PageSize, '\x12');
    uint64_t failures = 0;
};

TEST_F(HexCommandFailureTest, EveryCommand) {
    for (uint32_t command = 0; command < ViewCommandCount; ++command) {
        SCOPED_TRACE(command);
        FailInTurn([&] { input().ExecuteCommand(static_cast<ViewCommand>(command)); });
    }
    EXPECT_GT(failures, 5u);
}

TEST_F(HexCommandFailureTest, EveryKey) {
    std::vector<uint32_t> keys = {ViewKey::Backspace, ViewKey::Escape, ViewKey::Insert,
                                  ViewKey::Delete,    ViewKey::F2,     ViewKey::F3};
    for (uint32_t key = ViewKey::PageUp; key <= ViewKey::Down; ++key) keys.push_back(key);
    for (uint32_t key = u'0'; key <= u'9'; ++key) keys.push_back(key);
    for (uint32_t key = u'A'; key <= u'Z'; ++key) keys.push_back(key);
    for (const uint32_t key : keys) {
        for (uint32_t held = 0; held < 4; ++held) {
            SCOPED_TRACE(std::to_string(key) + " with " + std::to_string(held));
            FailInTurn([&] { Press(key, held & 1, held & 2); });
        }
        SCOPED_TRACE(key);
        FailInTurn([&] { Type({static_cast<Char>(key)}); });
    }
    EXPECT_GT(failures, 50u);
}

} // namespace
