#include "options/OptionsLogic.h"

#include "core/TextUtilities.h"
#include "language/Languages.h"

#include <QFile>
#include <QRegularExpression>

#include <utility>

using namespace Qt::StringLiterals;

namespace options {

namespace {

const QString automatic = u"AUTO"_s;

QString codeOf(const QString &text)
{
    const QString code = text.trimmed().toUpper();
    return languageCodes().contains(code) ? code : automatic;
}

} // namespace

const QStringList &languageCodes()
{
    static const QStringList codes = [] {
        QStringList offered{automatic};
        for (const language::Language &language : language::languages()) {
            offered.append(language.code);
        }
        offered.insert(offered.size() - 1, u"USER"_s);
        return offered;
    }();
    return codes;
}

QString ownLanguageName(const QString &code)
{
    const language::Language *language = language::languageOf(code);
    return language ? language->ownName : QString();
}

std::optional<qint32> portOf(const QString &text)
{
    static const QRegularExpression wholeNumber(u"^\\s*([+-]?[0-9]+)"_s);
    const QString digits = wholeNumber.match(text).captured(1);
    bool fits = false;
    const qlonglong port = digits.toLongLong(&fits);
    if (digits.isEmpty()) {
        return 0;
    }
    return fits && port >= 0 && port <= 0xFFFF ? std::optional(qint32(port)) : std::nullopt;
}

OptionsLogic::PopUpPage OptionsLogic::popUpPage() const
{
    const core::SettingsRecord &record = m_context.settings.record;
    return {.popAll = record.PopupAllLines == 1,
            .popDetail = record.PopupDetail != 0,
            .showInfo = record.ListUnpoppedCalls != 0};
}

OptionsLogic::SystemPage OptionsLogic::systemPage() const
{
    const core::SettingsRecord &record = m_context.settings.record;
    return {.language = codeOf(record.LanguageSetting.text()),
            .port = QString::number(record.LocalPort),
            .columns = m_context.effects.gridColumnNames(),
            .senders = m_context.effects.senders()};
}

QString OptionsLogic::columnTitle(const QString &name) const
{
    const QString title = name == "ID"_L1 ? name : m_context.texts.Lms(name);
    return title.isEmpty() ? name : title;
}

bool OptionsLogic::savePopUpPage(const PopUpPage &page)
{
    core::SettingsRecord &record = m_context.settings.record;
    const core::SettingsRecord before = record;
    record.PopupDetail = page.popDetail ? 1 : 0;
    record.PopupAllLines = page.popAll ? 1 : 2;
    record.ListUnpoppedCalls = page.showInfo ? 1 : 0;
    return m_context.settings.SaveMisc() || refuse(before);
}

// A port of 0 means the standard port; the endpoint replaces it when it is opened.
OptionsLogic::SavedSystem OptionsLogic::saveSystemPage(const SystemPage &page)
{
    core::SettingsRecord &record = m_context.settings.record;
    const core::SettingsRecord before = record;
    const std::optional<qint32> port = portOf(page.port);
    record.LanguageSetting.setText(codeOf(page.language));
    record.LocalPort = port.value_or(before.LocalPort);
    if (!m_context.effects.ChangeGridCfg(page.columns)) { // writes all of the record
        refuse(before);
        m_context.effects.iniGridCallerID_tarn();
        return {};
    }
    const bool portChanged = record.LocalPort != before.LocalPort;
    const QString portInUse = portChanged ? m_context.effects.iniUDP() : QString();
    const core::TextLookup &texts = m_context.texts;
    const QString refusedPort = port ? QString() : texts.Lms(u"PortOutOfRange"_s);
    const QString refusedSenders = saveSenders(page.senders);
    const SavedSystem saved = {
        .settings = true, .port = refusedPort.isEmpty(), .senders = refusedSenders.isEmpty()};
    QStringList told = {refusedPort,
                        refusedSenders,
                        saved.whole() ? QString() : texts.Lms(u"OtherOptionsSaved"_s),
                        portChanged && port == 0 ? texts.Lms(u"PortIsStandard"_s) : QString(),
                        portInUse,
                        isOtherLanguage(before) ? texts.Lms(u"PlsRestartSys"_s) : QString()};
    told.removeAll(QString());
    if (!told.isEmpty()) {
        m_context.prompts.tell(told.join(u"\n\n"_s));
    }
    return saved;
}

// Why the list was not saved; empty if it was, or was not to be changed.
QString OptionsLogic::saveSenders(const std::optional<QString> &senders)
{
    if (!senders) {
        return {};
    }
    QString refusal = m_context.effects.sendersRefusal(*senders);
    if (!refusal.isEmpty()) {
        return refusal;
    }
    return m_context.effects.saveSenders(*senders) ? QString() : m_context.texts.Lms(u"SendersNotSaved"_s);
}

// An empty setting has always meant the operating system's language, so writing that out changes nothing.
bool OptionsLogic::isOtherLanguage(const core::SettingsRecord &before) const
{
    const QString kept = before.LanguageSetting.text().toUpper();
    return m_context.settings.record.LanguageSetting.text() != (kept.isEmpty() ? automatic : kept);
}

// Takes the record back: otherwise the next one to write it would store what could not be stored now.
bool OptionsLogic::refuse(const core::SettingsRecord &before)
{
    m_context.settings.record = before;
    m_context.prompts.tell(m_context.texts.Lms(u"OptionsNotSaved"_s));
    return false;
}

bool OptionsLogic::mayEditLanguage()
{
    const QString &file = m_context.paths.UserLangFile;
    if (QFile::exists(file)) {
        return true;
    }
    const QString message = u"file lose,"_s + file;
    m_context.log.WriteRunLog(message);
    m_context.prompts.tell(message);
    return false;
}

} // namespace options
