#pragma once

#include "view/TextEditor.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

// Whether all that a view says of its caret, its selection and its top line means places of the text, which is
// given as the user sees it, and line, column and offset the same place.
inline ::testing::AssertionResult ViewAgrees(const TextEditor& view, const std::u16string& text) {
    const auto fail = [&](const char* what) {
        return ::testing::AssertionFailure()
               << what << ": line " << view.CaretLine() << ", column " << view.CaretColumn() << ", offset "
               << view.CaretOffset() << ", anchor " << view.SelectionAnchor() << ", top line " << view.TopLine()
               << ", length " << text.size();
    };
    const size_t caret = view.CaretOffset();
    if (caret > text.size()) return fail("caret past the end");
    if (view.SelectionAnchor() > text.size()) return fail("anchor past the end");
    const size_t feed = caret ? text.rfind(u'\n', caret - 1) : text.npos;
    const size_t lineStart = feed == text.npos ? 0 : feed + 1;
    const auto at = text.begin() + static_cast<std::ptrdiff_t>(caret);
    if (view.CaretLine() != static_cast<size_t>(std::count(text.begin(), at, u'\n'))) return fail("another line");
    if (view.CaretColumn() != caret - lineStart) return fail("another column");
    const auto lines = static_cast<size_t>(std::count(text.begin(), text.end(), u'\n')) + 1;
    if (view.Text().LineCount() != lines) return fail("another number of lines");
    if (view.TopLine() >= lines) return fail("top line past the end");
    if (view.Text().Length() != text.size()) return fail("another length");
    if (view.Text().LineStart(view.CaretLine()) != lineStart) return fail("another start of the line");
    const TextSpan shown = view.Text().Line(view.CaretLine());
    if (text.substr(lineStart, text.find(u'\n', lineStart) - lineStart) != std::u16string(shown.text, shown.length))
        return fail("another text of the line");
    return ::testing::AssertionSuccess();
}
