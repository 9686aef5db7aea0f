#pragma once

#include "settings/AdditionalSettings.h"

// The additional settings that a test sets are off again at its end.
struct WithAdditional {
    WithAdditional() = default;
    ~WithAdditional() { additionalSettings = {}; }
    WithAdditional(const WithAdditional&) = delete;
    WithAdditional& operator=(const WithAdditional&) = delete;

    AdditionalSettings* operator->() const { return &additionalSettings; }
};
