#pragma once

#include "options/forms/OptionsWindows.h"
#include "support/Ui.h"

using Options = support::Ui<options::frmOptions>;

/// A desk with the windows of the options; records what saving has caused.
struct OptionsDesk : support::TestForms, options::OptionsEffects
{
    QStringList caused;
    std::optional<QString> kept = QString(); ///< who may send
    QString portTrouble;
    bool keepsSenders = true;
    options::OptionsWindows windows{{context(), settings, *this}};

    OptionsDesk() { settings.SetDefaulteMisc_tarn(); }

    QString sendersTrouble() const override
    {
        return !kept ? u"[unreadable]"_s : kept->contains(u'!') ? u"[trouble]"_s : QString();
    }
    std::optional<QString> senders() const override { return kept; }
    QString sendersRefusal(const QString &text) const override
    {
        return text.contains(u'!') ? u"[refusal]"_s : QString();
    }
    bool saveSenders(const QString &text) override
    {
        caused.append(u"saveSenders "_s + text);
        kept = keepsSenders ? text : kept;
        return keepsSenders;
    }
    QString iniUDP() override
    {
        caused.append(u"iniUDP"_s);
        return portTrouble;
    }
    QStringList gridColumnNames() const override
    {
        return settings.record.gridColumnNames.text().split(u',');
    }
    QStringList hiddenGridColumns() const override { return {u"ID"_s}; }
    bool ChangeGridCfg(const QStringList &names) override
    {
        settings.record.gridColumnNames.setText(names.join(u','));
        return settings.SaveMisc();
    }
    void iniGridCallerID_tarn() override { caused.append(u"iniGridCallerID_tarn"_s); }

    core::SettingsRecord saved() const
    {
        return core::SettingsRecord::fromBytes(fileBytes(paths.SettingsFile));
    }
    /// From now on nothing can be saved.
    void breakSettings() const
    {
        QFile::remove(paths.SettingsFile);
        QDir().mkdir(paths.SettingsFile);
    }
};
