#include "app/win32/FrameSettings.h"

#include "app/ScreenBatch.h"
#include "app/win32/AllViews.h"
#include "app/win32/CommandWindow.h"
#include "app/win32/SettingsStore.h"
#include "app/win32/ToolMenu.h"
#include "document/TextBuffer.h"
#include "settings/Settings.h"
#include "settings/win32/DrawingObjects.h"
#include "settings/win32/HighContrast.h"

void FrameSettings::Reapply(const SettingsChanges& changes) {
    if (changes.HoldsColour()) HighContrast::Follow();
    // Engines have colours of their own; making them again costs every document its line states.
    if (!changes.HoldsColour()) return Apply(SettingsEffect::Layout);
    // The only drawing object without a change handler of its own. Without memory the old one stays.
    static_cast<void>(DrawingObjects::RefreshSpaceDot());
    DetachEngines();
    store.ReloadEngineDefinitions();
    Apply(SettingsEffect::Engine);
}

void FrameSettings::Reload() {
    DetachEngines();
    // Without memory the settings stay as they are, and the documents get their engines back.
    static_cast<void>(store.Load());
    RebuildToolMenu(GetMenu(frame));
    Apply(SettingsEffect::Engine);
}

void FrameSettings::Apply(SettingsEffect kind) {
    commandWindow.ApplyFont();
    commandWindow.Invalidate();
    titleBar.Follow(frame);
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next)
        node->document->OnSettingsChanged(kind);
    screen.LayOut();
    LayOutViews(kind);
}

void FrameSettings::FollowSystemColours() {
    const SettingsChanges changes = HighContrast::Follow();
    titleBar.Follow(frame); // High Contrast alone may change it
    if (changes.HoldsColour()) Reapply(changes);
}

void FrameSettings::OnMetricsChanged() { LayOutViews(SettingsEffect::Layout); }

void FrameSettings::LayOutViews(SettingsEffect kind) {
    ForEachView(documents, [kind](View& view) {
        view.OnSize(kind);
        view.Invalidate();
    });
}

// Engine definitions hold colours of the settings, and engines refer to definitions: no document keeps one
// while the definitions change.
void FrameSettings::DetachEngines() {
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next)
        if (!node->document->IsBinary()) static_cast<TextBuffer*>(node->document)->AttachEngine(nullptr);
}
