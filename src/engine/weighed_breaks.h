#pragma once

#include "engine/extension_settings.h"

namespace Tessel {

// Whether the scheme asks for line breaks that are weighed against each other. Widths are then those that people see.
inline bool weighsBreaks(const ExtensionSettings& settings) {
    return settings.callArgumentStrategy != kAnyNumber || settings.expressionStrategy != kAnyNumber ||
           settings.breaksAsLastResort;
}

}  // namespace Tessel
