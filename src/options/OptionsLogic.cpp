#include "options/OptionsLogic.h"

#include "core/TextUtilities.h"

#include <QFile>
#include <QRegularExpression>

#include <array>
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
    static const QStringList codes = {automatic, u"ENG"_s, u"CHS"_s, u"CHT"_s,  u"SPN"_s,
                                      u"ARA"_s,  u"FRN"_s, u"HBR"_s, u"TUK"_s,  u"KOR"_s,
                                      u"POL"_s,  u"PTG"_s, u"VN"_s,  u"USER"_s, u"ID"_s};
    return codes;
}

QString ownLanguageName(const QString &code)
{
    constexpr std::array<std::pair<QLatin1StringView, QStringView>, 12> names = {{
        {"ENG"_L1, u"English"},
        {"CHS"_L1, u"简体中文"},
        {"CHT"_L1, u"繁體中文"},
        {"SPN"_L1, u"Español"},
        {"ARA"_L1, u"العربية"},
        {"FRN"_L1, u"Français"},
        {"HBR"_L1, u"עברית"},
        {"TUK"_L1, u"Türkçe"},
        {"KOR"_L1, u"한국어"},
        {"POL"_L1, u"Polski"},
        {"PTG"_L1, u"Português"},
        {"VN"_L1, u"Tiếng Việt"},
    }};
    const auto *found = std::ranges::find_if(names, [&](const auto &name) { return name.first == code; });
    return found != names.end() ? found->second.toString() : QString();
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
            .columns = m_context.effects.gridColumnNames()};
}

QString OptionsLogic::columnTitle(const QString &name) const
{
    const QString title = name == "ID"_L1 ? name : m_context.texts.Lms(name);
    return title.isEmpty() ? name : title;
}

bool OptionsLogic::savePopUpPage(const PopUpPage &page)
{
    core::SettingsRecord &record = m_context.settings.record;
    record.PopupDetail = page.popDetail ? 1 : 0;
    record.PopupAllLines = page.popAll ? 1 : 2;
    record.ListUnpoppedCalls = page.showInfo ? 1 : 0;
    return save();
}

bool OptionsLogic::saveSystemPage(const SystemPage &page)
{
    saveLanguage(page.language);
    savePort(page.port);
    m_context.effects.ChangeGridCfg(page.columns);
    return save();
}

// An empty setting has always meant the operating system's language, so writing that out changes nothing.
void OptionsLogic::saveLanguage(const QString &text)
{
    auto &setting = m_context.settings.record.LanguageSetting;
    const QString kept = setting.text().toUpper();
    const QString before = kept.isEmpty() ? automatic : kept;
    setting.setText(codeOf(text));
    if (setting.text() != before) {
        m_context.prompts.tell(m_context.texts.Lms(u"PlsRestartSys"_s));
    }
}

// A port of 0 stands for the standard one, which the endpoint puts in its place when it is opened.
void OptionsLogic::savePort(const QString &text)
{
    const std::optional<qint32> port = portOf(text);
    if (!port) {
        m_context.prompts.tell(m_context.texts.Lms(u"PortOutOfRange"_s));
    } else if (*port != m_context.settings.record.LocalPort) {
        m_context.settings.record.LocalPort = *port;
        m_context.effects.iniUDP();
        if (*port == 0) {
            m_context.prompts.tell(m_context.texts.Lms(u"PortIsStandard"_s));
        }
    }
}

bool OptionsLogic::saveSenders(const QString &text)
{
    const QString trouble = m_context.effects.sendersTroubleOf(text);
    if (!trouble.isEmpty()) {
        m_context.prompts.tell(trouble);
        return false;
    }
    const bool saved = m_context.effects.saveSenders(text);
    if (!saved) {
        m_context.prompts.tell(m_context.texts.Lms(u"OptionsNotSaved"_s));
    }
    return saved;
}

bool OptionsLogic::save()
{
    const bool saved = m_context.settings.SaveMisc();
    if (!saved) {
        m_context.prompts.tell(m_context.texts.Lms(u"OptionsNotSaved"_s));
    }
    return saved;
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
