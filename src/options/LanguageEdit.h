#pragma once

#include "core/Settings.h"

#include <QString>

namespace options {

/// The select, in the given words, of the translator's rows that match what was searched for: all of them in
/// their own order for an empty text, else those that hold it, by key.
QString languageRows(const QString &condition);

/// The two ways to run in the operator's own texts.
struct OwnTexts
{
    bool useId = false;   ///< show the keys
    bool useUser = false; ///< show the operator's own translation
    bool operator==(const OwnTexts &) const = default;
};

OwnTexts ownTexts(const core::SettingsRecord &record);

/// Stores the choice in the language setting, the keys before the translation; with neither the setting
/// stays.
void chooseOwnTexts(core::SettingsRecord &record, OwnTexts choice);

} // namespace options
