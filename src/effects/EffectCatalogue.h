#pragma once

#include <array>

/// One built-in effect. Classes stand here by name alone, so that a row may wait for its class.
struct EffectCatalogueRow
{
    const char* id;
    const char* name; ///< UTF-8, source text in the translation context "EffectNames"
    int order;        ///< place within the group
    const char* workerClass;
    const char* sOptWidget;         ///< class of the short option widget
    const char* advancedLOptWidget; ///< class of the long option widget, offered in advanced mode only
    const char* icon;               ///< resource path, empty for none
};

/// All built-in effects, in the order of registration.
const std::array<EffectCatalogueRow, 25>& effectCatalogue();
