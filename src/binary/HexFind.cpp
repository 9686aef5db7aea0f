#include "binary/HexFind.h"

#include "binary/HexEditor.h"
#include "viewbase/FindState.h"
#include "viewbase/HostCalls.h"
#include "viewbase/LongOperation.h"

namespace {

bool Search(HexEditor& editor, bool backward, ByteHit& hit) {
    if (findState.searchHistory.Count() == 0) return false;
    BinaryDocument& document = *editor.GetBinaryDocument();
    const ByteQuery query = {backward ? editor.Selected().Start() : editor.Selected().End(), editor.FileSize(),
                             findState.matchCase, backward, findState.hexPattern};
    {
        LongOperation progress(editor.Surface());
        if (document.FindBytes(findState.searchHistory.Newest(), query, hit, &progress)) return true;
    }
    // An unreadable file must not count as "not found".
    if (document.SearchFailed()) {
        findState.cancelled = true;
        HostCalls::ShowStatus(editor.Surface(), u"Failed reading the file");
    }
    return false;
}

} // namespace

bool HexFind::FindNext(HexEditor& editor, bool backward) {
    if (!editor.GetBinaryDocument()) return false;
    HostCalls::ShowStatus(editor.Surface(), nullptr);
    ByteHit hit;
    if (!Search(editor, backward, hit)) {
        HostCalls::SearchFailed(editor.Surface());
        return false;
    }
    editor.SelectBytes({hit.offset + hit.length, hit.offset});
    HostCalls::SearchSucceeded(editor.Surface(), hit.wrapped);
    return true;
}
