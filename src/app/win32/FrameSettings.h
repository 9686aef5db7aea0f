#pragma once

#include "app/win32/TitleBar.h"
#include "base/win32/Windows.h"
#include "document/SettingsEffect.h"

class CommandWindow;
class DocumentList;
class ScreenBatch;
class SettingsChanges;
class SettingsStore;

// Brings settings that have changed to the documents, the views and the frame.
class FrameSettings {
public:
    FrameSettings(SettingsStore& loaded, const DocumentList& allDocuments, CommandWindow& commands, ScreenBatch& batch)
        : store(loaded), documents(allDocuments), commandWindow(commands), screen(batch) {}
    FrameSettings(const FrameSettings&) = delete;
    FrameSettings& operator=(const FrameSettings&) = delete;

    void SetFrame(HWND window) {
        frame = window;
        titleBar.Follow(frame);
    }
    // The settings record has changed.
    void Reapply(const SettingsChanges& changes);
    // Reads the settings file again.
    void Reload();
    void Apply(SettingsEffect kind);
    // The system's colours, or High Contrast, may be others.
    void FollowSystemColours();
    // The font was rebuilt.
    void OnMetricsChanged();

private:
    void DetachEngines();
    void LayOutViews(SettingsEffect kind);

    SettingsStore& store;
    const DocumentList& documents;
    CommandWindow& commandWindow;
    ScreenBatch& screen;
    HWND frame = nullptr;
    TitleBar titleBar;
};
