#include "app/FrameTitle.h"

#include "base/Platform.h"
#include "base/TextFormat.h"
#include "document/Document.h"

#include <utility>

namespace {

bool AppendTitle(WString& out, const Document& document) {
    bool running = false;
    document.GetOutputState(running);
    return out.Append(document.GetName()) && (!document.IsModified() || out.AppendChar(u'*')) &&
           (!running || out.Append(u" *Running*")) && out.Append(u" - Orvane");
}

// The menu takes a single ampersand for the mark of the next letter's key.
bool AppendMenuName(WString& out, const Char* name) {
    for (; *name; ++name)
        if (!out.AppendChar(*name) || (*name == u'&' && !out.AppendChar(u'&'))) return false;
    return true;
}

bool Replace(WString& out, WString& made) {
    out = std::move(made);
    return true;
}

} // namespace

bool BuildTitle(const Document* active, bool recording, WString& out) {
    WString title;
    if (recording && !title.Append(u"Recording - ")) return false;
    if (!(active ? AppendTitle(title, *active) : title.Append(u"Orvane"))) return false;
    return Replace(out, title);
}

bool BuildStatusText(bool commandWindowShown, bool console, WString& out) {
    WString text;
    if (commandWindowShown) {
        if (!Platform::CurrentDirectory(text) || (console && !text.Append(u" [Console]"))) return false;
    }
    return Replace(out, text);
}

bool BuildWindowItem(uint32_t index, const Document& document, WString& out) {
    WString text;
    if (!Text::AppendFormat(text, u"&%u ", index + 1) || !AppendMenuName(text, document.GetName())) return false;
    if (document.IsModified() && !text.AppendChar(u'*')) return false;
    return Replace(out, text);
}
