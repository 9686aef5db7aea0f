#include "TextViewTest.h"
#include "WheelScreen.h"
#include "binary/HexTyping.h"
#include "binary/win32/HexView.h"
#include "support/ScratchFolder.h"
#include "support/TestServices.h"

namespace {

constexpr Colour Red = Rgb(255, 0, 0);
constexpr Colour Green = Rgb(0, 255, 0);
constexpr Colour Blue = Rgb(0, 0, 255);
constexpr Colour Sand = Rgb(255, 255, 0xc0);
constexpr Colour White = Rgb(255, 255, 255);

// A hex view in a real window.
class HexPaintTest : public TextViewTest {
protected:
    void TearDown() override {
        Close();
        TextViewTest::TearDown();
    }
    void Close() {
        if (file) file->Release();
        file = nullptr;
    }
    void ShowFile(const std::string& bytes) {
        Close();
        hexServices.makeView = HexView::Create;
        file = new BinaryDocument(hexServices);
        file->AddRef();
        ASSERT_TRUE(file->Open(folder.Write("file.bin", bytes).c_str()));
        DocumentView* made = file->CreateView(frame);
        ASSERT_NE(made, nullptr);
        hex = static_cast<HexView*>(made->AsView());
    }
    Picture Shot() {
        HideCaret(hex->GetWindow()); // it would be in the picture
        InvalidateRect(hex->GetWindow(), nullptr, TRUE);
        UpdateWindow(hex->GetWindow());
        return Picture(hex->GetWindow());
    }
    HexEditor& Bytes() const { return hex->Editor(); }
    void Type(Char digit) const { HexTyping::Type(Bytes(), digit); }
    // Where a character of the hex column starts, and the first pixel of a row.
    int HexX(int column) const { return Bytes().Viewport().TextLeft() + column * Average(); }
    int TextX(int at) const { return HexX(static_cast<int>(HexViewport::TextColumn) + at); }
    int Y(int row) const { return row * LineHeight(); }
    // Whether a cell of one row has pixels of the colour.
    bool Has(const Picture& picture, Colour colour, int left, int right, int row) const {
        return picture.Has(colour, left, Y(row), right, Y(row + 1));
    }
    bool IsAll(const Picture& picture, Colour colour, int left, int right, int row) const {
        return picture.IsAll(colour, left, Y(row), right, Y(row + 1));
    }
    // The pixels of one character, to compare what two places show.
    std::vector<Colour> Glyph(const Picture& picture, int x, int row) const {
        std::vector<Colour> pixels;
        for (int y = Y(row); y < Y(row + 1); ++y)
            for (int i = 0; i < Average(); ++i) pixels.push_back(picture.At(x + i, y));
        return pixels;
    }

    ScratchFolder folder;
    BinaryDocument* file = nullptr;
    HexView* hex = nullptr;
};

} // namespace

TEST_F(HexPaintTest, TheColumnsAreSideBySide) {
    UseSettings(u"LineNumFg=#ff0000\nLineNumBg=#00ff00\nMarginColor=#0000ff\nTextFg=#000000\nTextBg=#ffffc0\n"
                u"MarginWidth=20");
    ShowFile(std::string(40, 'H')); // an offset column of four characters
    const Picture picture = Shot();
    EXPECT_EQ(Bytes().Viewport().TextLeft(), 4 * Average() + 20);
    EXPECT_TRUE(Has(picture, Red, 0, 4 * Average(), 0));
    EXPECT_TRUE(Has(picture, Green, 0, 4 * Average(), 0));
    EXPECT_TRUE(IsAll(picture, Blue, 4 * Average(), 4 * Average() + 20, 0));
    for (int at = 0; at < 16; ++at) {
        EXPECT_TRUE(Has(picture, 0, HexX(3 * at), HexX(3 * at + 1), 0)) << at;
        EXPECT_TRUE(Has(picture, 0, HexX(3 * at + 1), HexX(3 * at + 2), 0)) << at;
        EXPECT_TRUE(IsAll(picture, Sand, HexX(3 * at + 2), HexX(3 * at + 3), 0)) << at;
        EXPECT_TRUE(Has(picture, 0, TextX(at), TextX(at + 1), 0)) << at;
    }
    EXPECT_TRUE(IsAll(picture, Sand, HexX(47), TextX(0), 0));
    EXPECT_TRUE(IsAll(picture, Sand, TextX(16), TextX(16) + 30, 0));
}

TEST_F(HexPaintTest, TheOffsetIsRightAligned) {
    UseSettings(u"LineNumFg=#ff0000\nLineNumBg=#ffffff\nTextFg=#ff0000\nTextBg=#ffffff");
    ShowFile(std::string(0x1200, '\xAB')); // six characters: the last six of ten digits
    Bytes().Viewport().ScrollTo(0x11A);
    const Picture picture = Shot();
    // The row's offset is 0x11A0; the A looks like that of the bytes.
    EXPECT_EQ(Glyph(picture, 4 * Average(), 0), Glyph(picture, HexX(0), 0));
    EXPECT_EQ(Glyph(picture, 2 * Average(), 0), Glyph(picture, 3 * Average(), 0));
    EXPECT_EQ(Glyph(picture, 0, 0), Glyph(picture, 5 * Average(), 0));
    EXPECT_NE(Glyph(picture, 0, 0), Glyph(picture, 2 * Average(), 0));
}

TEST_F(HexPaintTest, APartlyFilledRowAndTheRowsAfterItAreEmpty) {
    UseSettings(u"TextFg=#000000\nTextBg=#ffffc0\nLineNumBg=#00ff00\nMarginColor=#0000ff");
    ShowFile(std::string(17, 'H'));
    const Picture picture = Shot();
    EXPECT_TRUE(Has(picture, 0, HexX(0), HexX(2), 1));
    EXPECT_TRUE(IsAll(picture, Sand, HexX(2), TextX(0), 1));
    EXPECT_TRUE(Has(picture, 0, TextX(0), TextX(1), 1));
    EXPECT_TRUE(IsAll(picture, Sand, TextX(1), TextX(16), 1));
    EXPECT_TRUE(Has(picture, Green, 0, Bytes().Viewport().GutterWidth(), 1));
    EXPECT_TRUE(IsAll(picture, Sand, 0, Bytes().Viewport().GutterWidth(), 2));
    EXPECT_TRUE(IsAll(picture, Blue, Bytes().Viewport().GutterWidth(), Bytes().Viewport().TextLeft(), 2));
    EXPECT_TRUE(IsAll(picture, Sand, HexX(0), TextX(16), 2));
}

TEST_F(HexPaintTest, AnEmptyFileShowsNoRows) {
    UseSettings(u"TextBg=#ffffc0\nLineNumBg=#00ff00");
    ShowFile("");
    const Picture picture = Shot();
    EXPECT_TRUE(IsAll(picture, Sand, 0, Bytes().Viewport().GutterWidth(), 0));
    EXPECT_TRUE(IsAll(picture, Sand, HexX(0), TextX(16), 0));
}

TEST_F(HexPaintTest, ModifiedBytesShowInTheirColourUntilTheyAreAsInTheFile) {
    UseSettings(u"TextFg=#000000\nTextBg=#ffffc0\nBinFg=#ff0000\nBinBg=#00ff00");
    ShowFile(std::string(40, 'H'));
    const Picture untouched = Shot();
    EXPECT_FALSE(untouched.Has(Red, 0, 0, TextX(16), Y(5)));
    Bytes().GoTo(18);
    Type(u'5');
    const Picture modified = Shot();
    EXPECT_TRUE(Has(modified, Red, HexX(6), HexX(8), 1));
    EXPECT_TRUE(Has(modified, Green, HexX(6), HexX(8), 1));
    EXPECT_TRUE(Has(modified, Red, TextX(2), TextX(3), 1));
    EXPECT_FALSE(Has(modified, Green, HexX(0), HexX(6), 1));
    EXPECT_FALSE(Has(modified, Green, HexX(9), TextX(2), 1));
    EXPECT_FALSE(Has(modified, Green, HexX(0), TextX(16), 0));
    Bytes().GoTo(18);
    Type(u'4'); // 0x48 again
    EXPECT_TRUE(Shot() == untouched);
    file->DoCommand(DocumentCommand::Undo);
    EXPECT_FALSE(Shot() == untouched);
    file->DoCommand(DocumentCommand::Undo);
    EXPECT_TRUE(Shot() == untouched);
}

TEST_F(HexPaintTest, SavedBytesShowInTheNormalColour) {
    UseSettings(u"BinFg=#ff0000\nBinBg=#00ff00");
    ShowFile(std::string(40, 'H'));
    Type(u'5');
    EXPECT_TRUE(Shot().Has(Green, HexX(0), 0, HexX(2), LineHeight()));
    ASSERT_TRUE(file->Save(nullptr, Encoding::Ansi, LineEnding::None));
    EXPECT_FALSE(Shot().Has(Green, HexX(0), 0, HexX(2), LineHeight()));
}

TEST_F(HexPaintTest, TheSelectionShowsInBothColumnsAndBeforeModifiedBytes) {
    UseSettings(u"TextBg=#ffffc0\nSelFg=#0000ff\nSelBg=#ffffff\nBinFg=#ff0000\nBinBg=#00ff00");
    ShowFile(std::string(40, 'H'));
    Bytes().GoTo(3);
    Type(u'5');
    Bytes().SelectBytes({2, 18});
    const Picture picture = Shot();
    EXPECT_FALSE(picture.Has(Green, 0, 0, TextX(16), Y(5)));
    EXPECT_FALSE(Has(picture, White, HexX(0), HexX(6), 0));
    for (int at = 2; at < 16; ++at) {
        EXPECT_TRUE(Has(picture, Blue, HexX(3 * at), HexX(3 * at + 2), 0)) << at;
        EXPECT_TRUE(Has(picture, Blue, TextX(at), TextX(at + 1), 0)) << at;
    }
    // The blank after a byte belongs to it, but there is none after the row's last one.
    EXPECT_TRUE(IsAll(picture, White, HexX(8), HexX(9), 0));
    EXPECT_TRUE(IsAll(picture, Sand, HexX(47), TextX(0), 0));
    EXPECT_TRUE(Has(picture, Blue, HexX(3), HexX(5), 1));
    EXPECT_FALSE(Has(picture, White, HexX(6), TextX(0), 1));
    EXPECT_FALSE(Has(picture, Blue, TextX(2), TextX(16), 1));
}

TEST_F(HexPaintTest, BytesThatAreNoCharactersShowAsDots) {
    UseSettings(u"");
    ShowFile("\x1F\x7F.H");
    const Picture picture = Shot();
    EXPECT_EQ(Glyph(picture, TextX(0), 0), Glyph(picture, TextX(2), 0));
    EXPECT_EQ(Glyph(picture, TextX(1), 0), Glyph(picture, TextX(2), 0));
    EXPECT_NE(Glyph(picture, TextX(3), 0), Glyph(picture, TextX(2), 0));
}

TEST_F(HexPaintTest, DrawnStraightThePictureIsTheSame) {
    UseSettings(u"RenderType=0");
    ShowFile(std::string(1000, 'H'));
    Bytes().GoTo(20);
    Type(u'5');
    Bytes().SelectBytes({40, 60});
    const Picture buffered = Shot();
    settings.RenderType = 2;
    EXPECT_TRUE(Shot() == buffered);
}

TEST_F(HexPaintTest, ARepaintedStripGivesTheSamePicture) {
    UseSettings(u"");
    ShowFile(std::string(1000, 'H'));
    Bytes().Viewport().ScrollTo(3);
    const Picture whole = Shot();
    const RECT strip = {0, 37, WindowWidth, 90};
    InvalidateRect(hex->GetWindow(), &strip, TRUE);
    UpdateWindow(hex->GetWindow());
    EXPECT_TRUE(Picture(hex->GetWindow()) == whole);
}

TEST_F(HexPaintTest, ScrollingMovesThePicture) {
    UseSettings(u"");
    std::string bytes;
    for (int row = 0; row < 100; ++row) bytes += std::string(16, static_cast<char>('A' + row % 26));
    ShowFile(bytes);
    const Picture top = Shot();
    SendMessageW(hex->GetWindow(), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(Bytes().Viewport().TopRow(), 1u);
    const Picture moved = Shot();
    EXPECT_EQ(Glyph(top, TextX(0), 1), Glyph(moved, TextX(0), 0));
    SendMessageW(hex->GetWindow(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), 0);
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    EXPECT_EQ(Bytes().Viewport().TopRow(), 1u + lines);
}

TEST_F(HexPaintTest, TheScrollBarCountsRows) {
    UseSettings(u"");
    ShowFile(std::string(1601, 'H'));
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    ASSERT_TRUE(GetScrollInfo(hex->GetWindow(), SB_VERT, &info));
    EXPECT_EQ(info.nMin, 0);
    EXPECT_EQ(info.nMax, 101);
    EXPECT_EQ(static_cast<int>(info.nPage), Bytes().Viewport().VisibleRows());
    EXPECT_EQ(info.nPos, 0);
    // Sideways nothing can be scrolled, and the bar shows that.
    SCROLLBARINFO bar = {};
    bar.cbSize = sizeof(bar);
    ASSERT_TRUE(GetScrollBarInfo(hex->GetWindow(), static_cast<LONG>(OBJID_HSCROLL), &bar));
    EXPECT_TRUE(bar.rgstate[0] & STATE_SYSTEM_UNAVAILABLE);
}

TEST_F(HexPaintTest, AClickInEitherColumnPutsTheCaretOnTheByte) {
    UseSettings(u"");
    ShowFile(std::string(1600, 'H'));
    const auto click = [this](int x, int row) {
        const LPARAM point = MAKELPARAM(x, Y(row) + LineHeight() / 2);
        SendMessageW(hex->GetWindow(), WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(hex->GetWindow(), WM_LBUTTONUP, 0, point);
        return Bytes().Caret();
    };
    EXPECT_EQ(click(HexX(3 * 5) + 2, 2), 37u);
    EXPECT_EQ(click(TextX(9) + 2, 4), 73u);
    EXPECT_EQ(click(3, 1), 16u);
}

TEST_F(HexPaintTest, DetachingEndsADrag) {
    UseSettings(u"");
    ShowFile(std::string(100, 'H'));
    const HWND window = hex->GetWindow();
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(HexX(3), Y(0)));
    SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(HexX(9), Y(0)));
    ASSERT_EQ(Bytes().Caret(), 3u);
    ASSERT_EQ(GetCapture(), window);
    hex->Detach();
    EXPECT_EQ(GetCapture(), nullptr);
    hex->Attach(window);
    SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(HexX(9), Y(2)));
    EXPECT_EQ(Bytes().Caret(), 3u);
}

TEST_F(HexPaintTest, ADragEndsWhenAnotherWindowTakesTheMouse) {
    UseSettings(u"");
    ShowFile(std::string(100, 'H'));
    const HWND window = hex->GetWindow();
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(HexX(3), Y(0)));
    SetCapture(frame);
    SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(HexX(9), Y(2)));
    SendMessageW(window, WM_TIMER, 1, 0);
    EXPECT_EQ(Bytes().Caret(), 1u);
    EXPECT_EQ(GetCapture(), frame);
    ReleaseCapture();
}

TEST_F(HexPaintTest, ADragEndsWithItsWindow) {
    UseSettings(u"");
    ShowFile(std::string(100, 'H'));
    SendMessageW(hex->GetWindow(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(HexX(3), Y(0)));
    DestroyWindow(hex->GetWindow());
    ASSERT_EQ(hex->GetWindow(), nullptr);
    const HWND other = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, WindowWidth, WindowHeight, frame,
                                       nullptr, GetModuleHandleW(nullptr), nullptr);
    hex->Attach(other);
    SendMessageW(other, WM_MOUSEMOVE, 0, MAKELPARAM(HexX(9), Y(2)));
    EXPECT_EQ(Bytes().Caret(), 1u);
    SendMessageW(other, WM_TIMER, 1, 0);
    EXPECT_EQ(Bytes().Caret(), 1u);
}

TEST_F(HexPaintTest, AWheelSetToScreensScrollsByTheVisibleRows) {
    ShowFile(std::string(10000, 'H'));
    const WheelScreen wheel;
    ASSERT_TRUE(wheel.IsSet());
    SendMessageW(hex->GetWindow(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(Bytes().Viewport().TopRow(), static_cast<uint64_t>(Bytes().Viewport().VisibleRows()));
    SendMessageW(hex->GetWindow(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(Bytes().Viewport().TopRow(), 0u);
}

TEST_F(HexPaintTest, KeysAndCharactersReachTheEditor) {
    UseSettings(u"");
    ShowFile("HHHH");
    SendMessageW(hex->GetWindow(), WM_KEYDOWN, VK_RIGHT, 1);
    SendMessageW(hex->GetWindow(), WM_CHAR, u'7', 1);
    SendMessageW(hex->GetWindow(), WM_CHAR, u'A', 1);
    uint8_t bytes[4] = {};
    ASSERT_TRUE(file->ReadBytes(0, bytes, 4));
    EXPECT_EQ(bytes[1], 0x7A);
    EXPECT_EQ(Bytes().Caret(), 2u);
}

TEST_F(HexPaintTest, LinesAndBookmarksMeanNothing) {
    UseSettings(u"");
    ShowFile(std::string(1600, 'H'));
    Bytes().SelectBytes({3, 7});
    hex->GoToLine(5, true);
    hex->ToggleBookmark(2);
    EXPECT_EQ(Bytes().Anchor(), 3u);
    EXPECT_EQ(Bytes().Caret(), 7u);
}

TEST_F(HexPaintTest, ADoubleClickDoesNothing) {
    UseSettings(u"");
    ShowFile("HHHH");
    SendMessageW(hex->GetWindow(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(Bytes().Viewport().TextLeft() + 1, 1));
    EXPECT_FALSE(Bytes().HasSelection());
}

TEST_F(HexPaintTest, WhileSuspendedNothingIsInvalidated) {
    UseSettings(u"");
    ShowFile("HHHH");
    Shot();
    hex->SuspendRedraw(false);
    hex->Invalidate();
    EXPECT_FALSE(GetUpdateRect(hex->GetWindow(), nullptr, FALSE));
    hex->SuspendRedraw(true);
    EXPECT_TRUE(GetUpdateRect(hex->GetWindow(), nullptr, FALSE));
}

TEST_F(HexPaintTest, AViewWithoutAWindowIsNoFault) {
    UseSettings(u"");
    ShowFile("HHHH");
    DocumentView* made = file->CreateView(nullptr);
    ASSERT_NE(made, nullptr);
    auto& editor = static_cast<HexView*>(made->AsView())->Editor();
    HexTyping::Type(editor, u'4');
    editor.GoTo(3);
    editor.SelectAll();
    editor.Invalidate();
    EXPECT_EQ(editor.Caret(), 4u);
    made->Destroy();
}
