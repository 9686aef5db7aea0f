#include "view/StatusFields.h"

#include "base/TextFormat.h"
#include "base/WString.h"
#include "viewbase/ViewHost.h"

// The tab in front of each text centres it in its field.
void StatusFields::Show(ViewHost& host, const StatusValues& values) {
    static constexpr const Char* Endings[] = {u"\tUnknown", u"\tUnix", u"\tDos", u"\tMixed"};
    WString text;
    const auto send = [&](StatusField field, uint32_t& last, uint32_t value, const Char* format, uint32_t number) {
        text.Clear();
        if (last == value || !Text::AppendFormat(text, format, number)) return;
        last = value;
        host.SetStatusText(field, text.Text());
    };
    const auto [line, column] = values.caret;
    const auto ending = static_cast<uint32_t>(values.lineEnding);
    send(StatusField::Line, sent.line, line, u"\tLn %u", line + 1);
    send(StatusField::Column, sent.column, column, u"\tCol %u", column + 1);
    send(StatusField::Overwrite, sent.overwrite, values.overwrite, values.overwrite ? u"\tOVR" : u"\tINS", 0);
    send(StatusField::LineEnding, sent.lineEnding, ending, ending < 4 ? Endings[ending] : u"", 0);
}
