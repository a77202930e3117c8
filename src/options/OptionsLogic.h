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
        QStringList columns; ///< names of the grid's columns, in order
        bool operator==(const SystemPage &) const = default;
    };

    explicit OptionsLogic(const Context &context) : m_context(context) {}

    PopUpPage popUpPage() const;
    /// The language as one of the codes: an unknown setting is shown as "AUTO", which is what it acts as.
    SystemPage systemPage() const;
    /// A column's heading in the current language.
    QString columnTitle(const QString &name) const;

    /// The list of those who may send datagrams; nothing where it cannot be read.
    std::optional<QString> senders() const { return m_context.effects.senders(); }
    QString sendersTrouble() const { return m_context.effects.sendersTrouble(); }
    /// False where the text is no such list, or could not be stored, which the operator was told.
    bool saveSenders(const QString &text);

    /// Both write the settings file; false, with nothing changed, where that failed, which the operator was
    /// told. One box tells what there is to tell.
    bool savePopUpPage(const PopUpPage &page);
    bool saveSystemPage(const SystemPage &page);

    /// True where the user's language file stands; else the operator is told.
    bool mayEditLanguage();

private:
    bool isOtherLanguage(const core::SettingsRecord &before) const;
    bool refuse(const core::SettingsRecord &before);

    Context m_context;
};

} // namespace options
