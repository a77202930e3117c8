#pragma once

#include <QStringList>

namespace options {

/// What saved options cause in the rest of the program.
class OptionsEffects
{
public:
    virtual ~OptionsEffects() = default;
    /// Opens the UDP endpoint anew.
    virtual void iniUDP() = 0;
    /// The names of the caller-ID grid's seven columns in their current order.
    virtual QStringList gridColumnNames() const = 0;
    /// Those of them that are not shown.
    virtual QStringList hiddenGridColumns() const = 0;
    /// Gives the grid its columns in the order of these names, which it stores with the whole settings
    /// record, and builds it anew; widths and visibility stay with the names. False where nothing could be
    /// stored.
    virtual bool ChangeGridCfg(const QStringList &names) = 0;
    /// Builds the grid anew from the settings.
    virtual void iniGridCallerID_tarn() = 0;
};

} // namespace options
