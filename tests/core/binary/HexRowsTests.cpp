#include "HexViewTest.h"
#include "binary/HexRows.h"

#include <vector>

namespace {

// A painted row, as text and as one letter of its colour for each character: "s" selected, "m" modified,
// "-" like text.
struct Row {
    int32_t top = 0;
    bool pastEnd = false;
    std::string number;
    std::string text;
    std::string looks;
    int32_t fillLeft = 0;
};

struct HexRowsTest : HexViewTest {
    HexRowsTest() {
        settings.TextFg = 1;
        settings.TextBg = 2;
        settings.SelFg = 3;
        settings.SelBg = 4;
        settings.BinFg = 5;
        settings.BinBg = 6;
    }

    char LookOf(const DrawRun& run) const {
        if (run.foreground == 1 && run.background == 2) return '-';
        if (run.foreground == 3 && run.background == 4) return 's';
        return run.foreground == 5 && run.background == 6 ? 'm' : '?';
    }
    Row Take(const RowPicture& picture) const {
        Row row = {picture.top, picture.pastEnd, "", "", "", picture.fillLeft};
        for (uint32_t i = 0; i < picture.numberLength; ++i) {
            row.number += static_cast<char>(picture.number[i]);
            EXPECT_EQ(picture.numberAdvances[i], 8);
        }
        int32_t x = view().Viewport().TextLeft();
        for (uint32_t i = 0; i < picture.runCount; ++i) {
            const DrawRun& run = picture.runs[i];
            EXPECT_EQ(run.x, x); // one beside the other
            EXPECT_EQ(run.width, static_cast<int32_t>(run.count) * 8);
            EXPECT_EQ(run.kind, RunKind::Text);
            x += run.width;
            for (uint32_t at = run.start; at < run.start + run.count; ++at) {
                row.text += static_cast<char>(picture.text[at]);
                row.looks += LookOf(run);
                EXPECT_EQ(picture.advances[at], 8);
            }
        }
        EXPECT_EQ(picture.fill, settings.TextBg);
        EXPECT_EQ(picture.fillLeft, picture.pastEnd ? 0 : x);
        return row;
    }
    std::vector<Row> Paint(int32_t top = 0, int32_t bottom = 0) {
        std::vector<Row> painted;
        RowPicture picture;
        if (!rows.Begin(view(), top, bottom)) return painted;
        EXPECT_EQ(rows.GutterWidth(), view().Viewport().GutterWidth());
        EXPECT_EQ(rows.MarginRight(), view().Viewport().TextLeft());
        while (rows.Next(picture)) painted.push_back(Take(picture));
        return painted;
    }

    HexRows rows;
};

} // namespace

TEST_F(HexRowsTest, ARowIsOffsetDigitsAndCharacters) {
    settings.MarginWidth = 20;
    Show("0123456789abcdefXYZ");
    const std::vector<Row> painted = Paint();
    ASSERT_EQ(painted.size(), 11u); // ten rows and a spare one
    EXPECT_EQ(painted[0].number, "0000");
    EXPECT_EQ(painted[0].text, "30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66  0123456789abcdef");
    EXPECT_EQ(painted[1].number, "0010");
    EXPECT_EQ(painted[1].top, 16);
}

// "A file of 17 bytes has two rows; the second row has one byte and its hex column ends after two
// characters."
TEST_F(HexRowsTest, APartlyFilledRowEndsAfterItsLastByte) {
    Show("0123456789abcdefX");
    EXPECT_EQ(view().Viewport().RowCount(), 2u);
    const std::vector<Row> painted = Paint();
    EXPECT_EQ(painted[1].text, "58" + std::string(47, ' ') + "X");
    // Selected, it shows how far the byte's own cell goes.
    view().SelectBytes({0, 17});
    EXPECT_EQ(Paint()[1].looks, "ss" + std::string(47, '-') + "s");
    EXPECT_EQ(Paint()[0].looks, std::string(47, 's') + "--" + std::string(16, 's'));
}

TEST_F(HexRowsTest, RowsAfterTheFileAreEmpty) {
    Show("0123456789abcdefX");
    const std::vector<Row> painted = Paint();
    for (size_t i = 0; i < painted.size(); ++i) {
        EXPECT_EQ(painted[i].pastEnd, i >= 2);
        if (i < 2) continue;
        EXPECT_EQ(painted[i].number, "");
        EXPECT_EQ(painted[i].text, "");
        EXPECT_EQ(painted[i].fillLeft, 0);
    }
}

TEST_F(HexRowsTest, AnEmptyFileHasNoRows) {
    Show("");
    for (const Row& row : Paint()) EXPECT_TRUE(row.pastEnd);
}

// "Bytes 0x7F and 0x1F show as "." in the text column."
TEST_F(HexRowsTest, BytesThatAreNoCharactersShowAsDots) {
    Show("\x1F\x20\x7E\x7F\x80\xFF");
    EXPECT_EQ(Paint()[0].text.substr(0, 17), "1F 20 7E 7F 80 FF");
    EXPECT_EQ(Paint()[0].text.substr(49), ". ~...");
}

TEST_F(HexRowsTest, FilesOfEveryBorderSizeAreShownToTheirLastByte) {
    for (const size_t size : BorderSizes) {
        const std::string content = Pattern(size);
        Show(content);
        view().Viewport().ScrollTo(UINT64_MAX);
        const std::vector<Row> painted = Paint();
        EXPECT_EQ(painted[0].pastEnd, size == 0);
        EXPECT_TRUE(painted[1].pastEnd);
        if (size == 0) continue;
        std::string digits;
        std::string characters;
        for (const char c : content.substr((size - 1) / 16 * 16)) {
            char text[4];
            snprintf(text, sizeof text, "%02X ", static_cast<uint8_t>(c));
            digits += text;
            characters += c >= 32 && c <= 126 ? c : '.';
        }
        digits.resize(HexViewport::TextColumn, ' ');
        EXPECT_EQ(painted[0].text, digits + characters) << size;
    }
}

TEST_F(HexRowsTest, TheOffsetIsRightAlignedInItsColumn) {
    const std::pair<uint64_t, std::string> sizes[] = {
        {10, "00"}, {1000, "03E0"}, {0x1000, "000FF0"}, {0x10000000, "000FFFFFF0"}};
    for (const auto& [size, last] : sizes) {
        if (!ShowEmpty(size)) GTEST_SKIP() << "no room for a sparse file";
        view().Viewport().ScrollTo(UINT64_MAX);
        EXPECT_EQ(Paint()[0].number, last);
    }
    // More than ten characters: blanks before the low 32 bits.
    if (!ShowEmpty(uint64_t{1} << 40)) GTEST_SKIP() << "no room for a sparse file";
    view().Viewport().ScrollTo(UINT64_MAX);
    EXPECT_EQ(Paint()[0].number, "  00FFFFFFF0");
}

TEST_F(HexRowsTest, SelectedBytesComeBeforeModifiedOnes) {
    Show("0123456789abcdef");
    view().GoTo(1);
    SetClipboard(u"414243");
    Paste();
    EXPECT_EQ(Paint()[0].looks.substr(0, 12), "---mmmmmmmmm");
    EXPECT_EQ(Paint()[0].looks.substr(12, 37), std::string(37, '-'));
    EXPECT_EQ(Paint()[0].looks.substr(49), "-mmm" + std::string(12, '-'));
    view().SelectBytes({5, 2});
    EXPECT_EQ(Paint()[0].looks.substr(0, 15), "---mmmsssssssss");
    EXPECT_EQ(Paint()[0].looks.substr(49), "-msss" + std::string(11, '-'));
}

// "A byte changed and changed back to its file value is drawn in the normal colours again."
TEST_F(HexRowsTest, AByteChangedBackLooksNormalAgain) {
    Show("0123456789abcdef");
    Type(u"41");
    EXPECT_EQ(Paint()[0].looks.substr(0, 4), "mmm-");
    EXPECT_EQ(Paint()[0].text.substr(0, 2), "41");
    view().GoTo(0);
    Type(u"30");
    EXPECT_EQ(Paint()[0].looks, std::string(65, '-'));
    Ctrl(u'Z');
    EXPECT_EQ(Paint()[0].looks[0], 'm');
    Ctrl(u'Z');
    Ctrl(u'Z');
    Ctrl(u'Z');
    EXPECT_EQ(Paint()[0].looks, std::string(65, '-'));
}

TEST_F(HexRowsTest, SavedBytesLookNormalAgain) {
    Show("0123456789abcdef");
    Type(u"41");
    ASSERT_TRUE(file->Save());
    EXPECT_EQ(Paint()[0].looks, std::string(65, '-'));
    EXPECT_EQ(Paint()[0].text.substr(0, 2), "41");
    Ctrl(u'Z');
    EXPECT_EQ(Paint()[0].looks[0], 'm'); // not what is in the file now
}

TEST_F(HexRowsTest, RowsOfSeveralPagesAreShown) {
    std::string content = Pattern(40000);
    for (char& c : content) c = static_cast<char>('A' + (c & 15));
    Show(content);
    view().Viewport().ScrollTo(16384 / 16 - 3);
    const std::vector<Row> painted = Paint();
    for (size_t i = 0; i < painted.size(); ++i)
        EXPECT_EQ(painted[i].text.substr(49), content.substr(16384 - 48 + i * 16, 16));
}

TEST_F(HexRowsTest, OnlyTheRowsAskedForArePainted) {
    Show(std::string(1600, 'x'));
    view().Viewport().ScrollTo(10);
    std::vector<Row> painted = Paint(33, 64);
    ASSERT_EQ(painted.size(), 2u);
    EXPECT_EQ(painted[0].top, 32);
    EXPECT_EQ(painted[0].number, "00C0");
    EXPECT_EQ(painted[1].number, "00D0");
    painted = Paint(16, 17);
    ASSERT_EQ(painted.size(), 1u);
    EXPECT_EQ(painted[0].number, "00B0");
}

TEST_F(HexRowsTest, AWarmPaintReadsNothing) {
    Show(std::string(1600, 'x'));
    Paint();
    FileCalls calls;
    Paint();
    Paint(16, 32);
    EXPECT_EQ(calls.Count(), 0u);
}

TEST_F(HexRowsTest, AFileThatBecameShorterShowsWhatIsThere) {
    Show(std::string(160, 'x'));
    std::filesystem::resize_file(file->folder.File("file.bin"), 19);
    view().ContentChanged();
    const std::vector<Row> painted = Paint();
    EXPECT_EQ(painted[0].text.substr(49), std::string(16, 'x'));
    EXPECT_EQ(painted[1].text, "78 78 78" + std::string(41, ' ') + "xxx");
    for (size_t i = 2; i < 10; ++i) {
        EXPECT_FALSE(painted[i].pastEnd);
        EXPECT_EQ(painted[i].text, std::string(49, ' '));
        EXPECT_NE(painted[i].number, "");
    }
}

TEST_F(HexRowsTest, ChangedBytesThatTheFileHasLostLookModified) {
    Show(std::string(160, '\0'));
    Type(u"41");
    std::filesystem::resize_file(file->folder.File("file.bin"), 8);
    view().ContentChanged();
    EXPECT_EQ(Paint()[0].looks.substr(49), "m-------mmmmmmmm");
}

TEST_F(HexRowsTest, AFileThatCannotBeReadShowsOffsetsOnlyAndIsAskedOnce) {
    Show(std::string(160, 'x'));
    view().ContentChanged();
    {
        FileCalls calls({1, 2, 3, 4, 5, 6, 7, 8});
        EXPECT_EQ(Paint()[0].text, std::string(49, ' '));
        const uint64_t asked = calls.Count();
        EXPECT_LE(asked, 4u);
        Paint();
        EXPECT_EQ(calls.Count(), asked);
    }
    // Once the view gets the focus again it is asked again.
    surface().focus = false;
    surface().TakeFocus();
    EXPECT_EQ(Paint()[0].text.substr(49), std::string(16, 'x'));
}

TEST_F(HexRowsTest, RowsBeforeDamagedBytesAreShown) {
    Show(std::string(20000, 'x'));
    const Damage damage(512, 600);
    view().GoTo(480);
    Resize(4);
    view().Viewport().ScrollTo(30);
    const std::vector<Row> painted = Paint();
    ASSERT_GE(painted.size(), 3u);
    EXPECT_EQ(painted[1].text.substr(0, 5), "78 78");
    EXPECT_EQ(painted[2].text.substr(0, 5), "     ");
    EXPECT_EQ(painted[2].number.substr(painted[2].number.size() - 3), "200");
}

TEST_F(HexRowsTest, WithoutDocumentOrFontThereIsNothingToPaint) {
    Show("x");
    surface().SetFont({0, 0, 0});
    EXPECT_TRUE(Paint().empty());
    TestHexView alone;
    EXPECT_FALSE(rows.Begin(alone.editor, 0, 0));
}
