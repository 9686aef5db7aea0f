#pragma once

#include "base/Types.h"

// The system's page of this test program is UTF-8 while one of these lives: the machines that build and test
// have a page of single bytes.
struct Utf8IsAnsi {
    Utf8IsAnsi();
    ~Utf8IsAnsi();
    Utf8IsAnsi(const Utf8IsAnsi&) = delete;
    Utf8IsAnsi& operator=(const Utf8IsAnsi&) = delete;
};

// While one of these lives, the system's page makes a NUL of the byte FE, refuses bytes with an FF, and a text with a
// U+FFFF: some pages of real systems do such things.
struct RefusingAnsiPage {
    RefusingAnsiPage();
    ~RefusingAnsiPage();
    RefusingAnsiPage(const RefusingAnsiPage&) = delete;
    RefusingAnsiPage& operator=(const RefusingAnsiPage&) = delete;
};

// While one of these lives, the pages of single bytes make a question mark of the character that has this byte.
struct LosingAnsiPage {
    explicit LosingAnsiPage(uint8_t byte);
    ~LosingAnsiPage();
    LosingAnsiPage(const LosingAnsiPage&) = delete;
    LosingAnsiPage& operator=(const LosingAnsiPage&) = delete;
};
