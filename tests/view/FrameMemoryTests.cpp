// A frame that is short of memory.

#include "app/OpenFiles.h"
#include "base/Heap.h"
#include "resource.h"
#include "support/ScratchFolder.h"
#include "view/OwnFrameTest.h"

using FrameMemoryTest = OwnFrameTest;

TEST_F(FrameMemoryTest, OutputThatNothingCanReplaceInItsPaneStaysOpen) {
    ScratchFolder folder;
    for (const char* name : {"a.txt", "b.txt"})
        ASSERT_TRUE(OpenFileArgument(main->Commands(), folder.Write(name, "text").c_str(), NoLine, false, false));
    main->Commands().MarkActiveAsOutput();
    Command(IDM_SPLIT_VERTICALLY);
    Command(IDM_FIRST_DOCUMENT);
    // One pane shows the file now and the other the output, in whose place the file needs another view.
    static int failures;
    failures = 0;
    Heap::SetFailureHook([] { return failures < 100 && ++failures; }); // not for ever, should it be asked for ever
    Command(IDM_CLOSE_OUTPUT_WINDOWS);
    Heap::SetFailureHook(nullptr);
    EXPECT_GT(failures, 0);
    EXPECT_EQ(main->Commands().Documents().Count(), 2u);
    Command(IDM_CLOSE_OUTPUT_WINDOWS);
    EXPECT_EQ(main->Commands().Documents().Count(), 1u);
}
