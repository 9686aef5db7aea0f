#include "HexViewTest.h"

namespace {

struct HexMouse : HexViewTest {};

} // namespace

TEST_F(HexMouse, APointMapsToTheByteWhoseDigitsAreThere) {
    Show(std::string(100, 'x')); // an offset column of 4 characters
    for (int32_t byte = 0; byte < 16; ++byte)
        for (int32_t part = 0; part < 3; ++part)
            EXPECT_EQ(At(4 + 3 * byte + part, 2), 32u + static_cast<uint32_t>(byte));
    EXPECT_EQ(At(0, 1), 16u); // the offset column belongs to the first byte
    EXPECT_EQ(view().PlaceAt({-100, 16}), 16u);
}

TEST_F(HexMouse, APointBetweenOrAfterTheColumnsMapsToTheLastByte) {
    Show(std::string(100, 'x'));
    const int32_t text = 4 + static_cast<int32_t>(HexViewport::TextColumn);
    for (int32_t column = 4 + 47; column < text; ++column) EXPECT_EQ(At(column, 0), 15u);
    for (int32_t column = text + 16; column < 300; column += 7) EXPECT_EQ(At(column, 0), 15u);
}

TEST_F(HexMouse, APointInTheTextColumnMapsToTheByteOfTheCharacter) {
    Show(std::string(100, 'x'));
    for (int32_t byte = 0; byte < 16; ++byte)
        EXPECT_EQ(At(4 + static_cast<int32_t>(HexViewport::TextColumn) + byte, 3), 48u + static_cast<uint32_t>(byte));
}

TEST_F(HexMouse, TheMarginShiftsTheColumnsUnderAPoint) {
    settings.MarginWidth = 24;
    Show(std::string(100, 'x'));
    EXPECT_EQ(view().PlaceAt({24 + (4 + 3) * 8, 0}), 1u);
    EXPECT_EQ(view().PlaceAt({24 + (4 + 3) * 8 - 1, 0}), 0u);
}

TEST_F(HexMouse, APointMapsToTheRowsScrolledTo) {
    Show(std::string(1000, 'x'));
    view().Viewport().ScrollTo(20);
    EXPECT_EQ(At(4, 3), 23 * 16u);
    EXPECT_EQ(view().PlaceAt({4 * 8, -16}), 19 * 16u);
    EXPECT_EQ(view().PlaceAt({4 * 8, -100 * 16}), 0u);
}

TEST_F(HexMouse, APointAfterTheFileMapsToItsEnd) {
    Show(std::string(20, 'x'));
    EXPECT_EQ(At(4 + 3 * 4, 1), 20u);
    EXPECT_EQ(At(4 + 3 * 9, 1), 20u);
    EXPECT_EQ(At(4, 5), 20u);
}

TEST_F(HexMouse, AClickPutsTheCaretOnTheHighNibbleAndTakesTheFocus) {
    Show(std::string(100, 'x'));
    Type(u"1");
    surface().focus = false;
    input().Drag().OnLeftButtonDown({(4 + 4) * 8, 16}, false);
    EXPECT_EQ(Caret(), (Two{17, 0}));
    EXPECT_FALSE(view().HasSelection());
    EXPECT_TRUE(surface().focus);
    EXPECT_TRUE(surface().captured);
}

TEST_F(HexMouse, DraggingSelectsUntilTheButtonIsUp) {
    Show(std::string(1000, 'x'));
    input().Drag().OnLeftButtonDown({4 * 8, 0}, false);
    input().Drag().OnMouseMove({(4 + 6) * 8, 16});
    EXPECT_EQ(Selection(), (Two{0, 18}));
    input().Drag().OnMouseMove({4 * 8, 12 * 16}); // below the window: scrolls on, and on with the timer
    const uint64_t top = view().Viewport().TopRow();
    EXPECT_GT(top, 0u);
    input().Drag().OnTimer();
    EXPECT_GT(view().Viewport().TopRow(), top);
    input().Drag().OnLeftButtonUp();
    EXPECT_FALSE(surface().captured);
    const Two selected = Selection();
    input().Drag().OnMouseMove({4 * 8, 0});
    input().Drag().OnTimer();
    EXPECT_EQ(Selection(), selected);
}

TEST_F(HexMouse, AShiftClickExtendsFromTheCaret) {
    Show(std::string(100, 'x'));
    view().SelectBytes({2, 5});
    input().Drag().OnLeftButtonDown({4 * 8, 16}, true);
    EXPECT_EQ(Selection(), (Two{5, 16}));
}
