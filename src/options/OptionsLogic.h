#pragma once

#include "core/Paths.h"
#include "core/Prompts.h"
#include "core/RunLog.h"
#include "core/Settings.h"
#include "core/TextLookup.h"
#include "options/OptionsEffects.h"

#include <QStringList>

#include <optional>

namespace options {

/// The languages that can be chosen, in the order in which they are offered.
const QStringList &languageCodes();

/// How a language calls itself; empty for the codes that stand for no language of their own.
QString ownLanguageName(const QString &code);

/// The whole number at the start of a port text, 0 where there is none ("12a" gives 12); nothing for one that
/// is no UDP port.
std::optional<qint32> portOf(const QString &text);

/// What the options dialog shows and saves.
class OptionsLogic
{
public:
    struct Context
    {
        const core::Paths &paths;
        core::RunLog &log;
        core::Settings &settings;
        const core::TextLookup &texts;
        core::Prompts &prompts;
        OptionsEffects &effects;
    };

    struct PopUpPage
    {
        bool popAll = false;
        bool popDetail = false;
        bool showInfo = false;
        bool operator==(const PopUpPage &) const = default;
    };

    struct SystemPage
    {
        QString language; ///< as it stands in the combo box
        QString port;
        QStringList columns;            ///< names of the grid's columns, in order
        std::optional<QString> senders; ///< who may send; nothing: as it is
        bool operator==(const SystemPage &) const = default;
    };

    /// What was saved of a system page: the settings file first, nothing of the page without it.
    struct SavedSystem
    {
        bool settings = false;
        bool port = false;
        bool senders = false;
        bool whole() const { return settings && port && senders; }
    };

    explicit OptionsLogic(const Context &context) : m_context(context) {}

    PopUpPage popUpPage() const;
    /// The language as one of the codes: an unknown setting is shown as "AUTO", which is what it acts as.
    SystemPage systemPage() const;
    /// A column's heading in the current language.
    QString columnTitle(const QString &name) const;

    QString sendersTrouble() const { return m_context.effects.sendersTrouble(); }

    /// False, with nothing changed, where the settings file could not be written, which the operator was
    /// told.
    bool savePopUpPage(const PopUpPage &page);
    /// One box tells what there is to tell.
    SavedSystem saveSystemPage(const SystemPage &page);

    /// True where the user's language file stands; else the operator is told.
    bool mayEditLanguage();

private:
    bool isOtherLanguage(const core::SettingsRecord &before) const;
    QString saveSenders(const std::optional<QString> &senders);
    bool refuse(const core::SettingsRecord &before);

    Context m_context;
};

} // namespace options
