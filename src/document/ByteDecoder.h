#pragma once

#include "base/CodePage.h"
#include "base/ScanBreaks.h"
#include "document/DecodedText.h"
#include "document/FilePieces.h"

// Decodes a file in the ANSI page or in UTF-8, piece by piece, into a text that grows as needed.
class ByteDecoder {
public:
    // `source` is at the first byte after the signature of `target.encoding`; both must outlive this. Without
    // `recognisesUtf8` all is in the ANSI page.
    ByteDecoder(FilePieces& source, bool recognisesUtf8, DecodedText& target);

    // Makes the text, with its line breaks normalised and counted, and settles the encoding. False when the file cannot
    // be read, and without memory. True, but without a text, when the code page cannot convert the file.
    [[nodiscard]] bool Run();
    uint32_t Length() const { return static_cast<uint32_t>(length); }
    const Scan::BreakCounts& Breaks() const { return breaks; }

private:
    // How the bytes are read. Guessed: as UTF-8 until they turn out to be something else.
    enum class Form { Ansi, Utf8, GuessedUtf8 };
    enum class Outcome { Done, NotUtf8, Ended, Refused };

    size_t UsableBytes();
    bool MakeRoom(size_t characters);
    Outcome Decode(size_t count);
    Outcome DecodeUtf8(size_t count);
    Outcome DecodePage(uint8_t* bytes, size_t count, CodePage page);
    Outcome ConvertStretch(uint8_t* bytes, size_t count, CodePage page);
    bool ReadAsAnsi();

    FilePieces& pieces;
    DecodedText& out;
    Form form;
    CodePage savePage;  // that the text is saved in
    bool mayLose;       // so that bytes have to be compared
    size_t length = 0;  // of the text so far
    uint64_t firstByte; // of the file that is text
    Scan::BreakCounts breaks;
    // What was before the first piece that is not ASCII.
    struct Before {
        uint64_t offset = 0;
        size_t length = 0;
        Scan::BreakCounts breaks;
        bool isSet = false;
    };
    Before beforeGuess;
};
