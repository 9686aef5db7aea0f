#pragma once

#include "syntax/EngineBase.h"
#include "syntax/Marker.h"

// Colours everything as text.
class PlainEngine final : public EngineBase {
public:
    // Without a definition the colours are those of the settings.
    explicit PlainEngine(const EngineDefinition* engineDefinition) : definition(engineDefinition) {
        EndMarkerChanged();
    }

    uint32_t ColourLine(uint32_t offset, const Char* text, uint32_t length, uint32_t& state,
                        ColouredLine& line) override;
    uint32_t ScanState(const Char* text, uint32_t length, uint32_t start, uint32_t state, uint32_t& stopped) override;
    bool MayChangeState(const Char*, uint32_t) override { return false; }
    void SetHighlight(uint32_t, const HighlightRange*) override {}
    uint32_t ScanLinesToEnd(const Char* text, uint32_t length, uint32_t state, uint32_t& stopped) override;

private:
    void EndMarkerChanged() override { endSearch.Set(endMarker, true); }

    const EngineDefinition* definition;
    ColourSpan span = {};
    MarkerSearch endSearch;
};
