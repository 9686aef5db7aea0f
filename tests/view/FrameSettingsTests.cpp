// What "setopt" makes of the drawing objects by way of the frame.

#include "app/CommandLanguage.h"
#include "base/win32/Handles.h"
#include "settings/win32/DrawingObjects.h"
#include "view/OwnFrameTest.h"

namespace {

class FrameSettingsTest : public OwnFrameTest {
protected:
    void BeforeFrame() override { ASSERT_TRUE(store.Load()); }

    static COLORREF DotColour() {
        const WindowDc screen(nullptr);
        const MemoryDc memory(screen.Get());
        const SelectedObject selected(memory.Get(), DrawingObjects::SpaceDot());
        return GetPixel(memory.Get(), 1, 1);
    }
};

} // namespace

TEST_F(FrameSettingsTest, SetoptGivesTheMarkOfASpaceItsColour) {
    ExecuteCommandLine(main->Commands(), u"setopt SpaceColor #ff0000");
    EXPECT_EQ(DotColour(), RGB(255, 0, 0));
}
