#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/Types.h"
#include "base/WString.h"
#include "document/DocumentView.h"
#include "document/Encoding.h"
#include "document/SettingsEffect.h"

// Kinds of CanDo and DoCommand; both are false for others.
enum class DocumentCommand : uint32_t { Edit = 0, Undo = 1, Redo = 2, Paste = 3 };

// Every document, text or binary. Reference-counted; the order of the operations is fixed.
class Document : public HeapObject {
public:
    virtual uint32_t AddRef() = 0;
    virtual uint32_t Release() = 0; // destroys the document and its views at zero
    // Makes a view, bound to this document and put at the end of its views, with a window inside
    // `parent` (none when that is null). Null on failure. The document owns it.
    virtual DocumentView* CreateView(NativeWindow parent) = 0;
    virtual bool IsModified() const = 0;
    // The full path, or the title of a document without a file.
    virtual const Char* GetName() const = 0;
    [[nodiscard]] virtual bool SetPath(const Char* name) = 0;
    virtual const Char* GetTitle() const = 0;
    [[nodiscard]] virtual bool SetTitle(const Char* text) = 0;
    [[nodiscard]] virtual bool Save(const Char* file, Encoding encoding, LineEnding lineEnding) = 0;
    // A null cursor starts at the first view. Returns the cursor's view and in `next` its successor
    // (null after the last); null when there are no views.
    virtual DocumentView* EnumViews(ViewNode* cursor, ViewNode*& next) const = 0;
    // False unless output of a command is collected here; `running` tells whether it still runs.
    virtual bool GetOutputState(bool& running) const = 0;
    // Whether another program has written the file. Asks its drive, however slow that is; false when it cannot tell.
    virtual bool IsChangedOnDisk() = 0;
    // Whether the file differs from how it was last loaded, saved or accepted, so that saving would overwrite another
    // program's changes that the user does not know of. Asks its drive; false when it cannot tell.
    virtual bool HasOtherFile() = 0;
    // Accepts the file's changes up to now; on a drive that has just answered slowly, up to the last IsChangedOnDisk.
    virtual void MarkFileTimeNow() = 0;
    // False leaves the document as it was.
    [[nodiscard]] virtual bool Reload() = 0;
    virtual void StopProcess() = 0;
    virtual bool CanDo(DocumentCommand kind) const = 0;
    virtual bool DoCommand(DocumentCommand kind) = 0;
    virtual void OnSettingsChanged(SettingsEffect kind) = 0;
    // False when the document has no encodings; else the current one and the EncodingCount names.
    virtual bool GetEncoding(Encoding& current, const Char* const*& names) const = 0;
    virtual bool IsBinary() const = 0;
    // Appends the document's lines of a session file. False without memory.
    [[nodiscard]] virtual bool GetSessionText(WString& out) const = 0;
    virtual void ResetSyntaxEngine() = 0;
    virtual LineEnding GetLineEnding() const = 0;
    // Brings the document's journal up to date; to be called at least every two seconds. False when a modified document
    // has none that is complete.
    [[nodiscard]] virtual bool FlushJournal() = 0;
    // Call it before a check for changes that the user has not asked for: whether IsChangedOnDisk may be called
    // now. A true answer uses up the document's turn at a slow drive.
    virtual bool MayCheckDisk() = 0;
    // What was done after the moment `after`, a serial of StepSerial, is undone in one step, and what is typed next is
    // a step of its own. Without memory the steps stay what they are.
    virtual void JoinSteps(uint32_t after) = 0;

protected:
    ~Document() = default;
};

// The fields and operations that all documents share.
class DocumentBase : public Document {
public:
    uint32_t AddRef() override { return ++refCount; }
    const Char* GetName() const override { return path.IsEmpty() ? title.Text() : path.Text(); }
    [[nodiscard]] bool SetPath(const Char* name) override;
    const Char* GetTitle() const override { return title.Text(); }
    [[nodiscard]] bool SetTitle(const Char* text) override { return title.Assign(text); }
    DocumentView* EnumViews(ViewNode* cursor, ViewNode*& next) const override;
    // Unlinks a view that is going away; the document does not touch it afterwards.
    virtual void ForgetView(DocumentView* view);
    bool HasView(const DocumentView* view) const { return FindView(view) != nullptr; }
    // Tells the frame, through the first view, that IsModified may answer otherwise now. Called by EditPipeline, and by
    // binary documents themselves, after every edit that was recorded, undone or taken back, once the views know of it,
    // and after a save. Not called for a character that extends a record: IsModified has not changed.
    void NotifyModified();

protected:
    ~DocumentBase() = default;

    // Puts the view that `make` makes at the end of the list. Null when there is no memory or no view.
    template <class Make> DocumentView* AddView(Make make) {
        auto* node = new ViewNode;
        if (!node) return nullptr;
        node->view = make();
        if (node->view) {
            views.Append(node);
            return node->view;
        }
        delete node;
        return nullptr;
    }
    void DestroyViews();

    WString path;       // full path; empty for a new document or an output pane
    WString title;      // shown when `path` is empty
    WString engineName; // chosen syntax engine; empty: by the path
    uint32_t refCount = 0;
    List<ViewNode> views;

private:
    ViewNode* FindView(const DocumentView* view) const;
};
