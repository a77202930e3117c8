#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace options {

/// What saved options cause in the rest of the program.
class OptionsEffects
{
public:
    virtual ~OptionsEffects() = default;
    /// Opens the UDP endpoint anew; what the operator is to know of it: that its port is in use, or nothing.
    virtual QString iniUDP() = 0;
    /// The list of those who may send datagrams, as text: empty where everybody may, nothing where it cannot
    /// be read.
    virtual std::optional<QString> senders() const = 0;
    /// What the operator is to know about the list in force: lines that cannot be read, or that it lets
    /// nobody in; empty: nothing.
    virtual QString sendersTrouble() const = 0;
    /// Why a text cannot be the list, for the operator; empty where it can.
    virtual QString sendersRefusal(const QString &text) const = 0;
    /// Takes effect at once; false, with an entry in the run log, where the text cannot be stored.
    virtual bool saveSenders(const QString &text) = 0;
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
