#include "language/LanguageChoice.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace language {

namespace {

constexpr quint16 primaryMask = 0xFF;

// The names that the run log has for the languages of systems, by the identifier's low byte.
QString systemLanguageName(quint16 systemLanguageId)
{
    static const QHash<quint16, QString> names = {
        {0x01, u"ARABIC"_s},     {0x02, u"BULGARIAN"_s},  {0x03, u"CATALAN"_s},   {0x04, u"CHINESE"_s},
        {0x05, u"CZECH"_s},      {0x06, u"DANISH"_s},     {0x07, u"GERMAN"_s},    {0x08, u"GREEK"_s},
        {0x0A, u"SPANISH"_s},    {0x0B, u"FINNISH"_s},    {0x0C, u"FRENCH"_s},    {0x0D, u"HEBREW"_s},
        {0x0E, u"HUNGARIAN"_s},  {0x0F, u"ICELANDIC"_s},  {0x10, u"ITALIAN"_s},   {0x11, u"JAPANESE"_s},
        {0x12, u"KOREAN"_s},     {0x13, u"DUTCH"_s},      {0x14, u"NORWEGIAN"_s}, {0x15, u"POLISH"_s},
        {0x16, u"PORTUGUESE"_s}, {0x18, u"ROMANIAN"_s},   {0x19, u"RUSSIA"_s},    {0x1A, u"CROATIAN"_s},
        {0x1B, u"SLOVAK"_s},     {0x1C, u"ALBANIAN"_s},   {0x1D, u"SWEDISH"_s},   {0x1E, u"THAI"_s},
        {0x1F, u"TURKISH"_s},    {0x21, u"INDONESIAN"_s}, {0x22, u"UKRAINIAN"_s}, {0x23, u"BELARUSIAN"_s},
        {0x24, u"SLOVENIAN"_s},  {0x25, u"ESTONIAN"_s},   {0x26, u"LATVIAN"_s},   {0x27, u"LITHUANIAN"_s},
        {0x29, u"FARSI"_s},      {0x2A, u"VIETNAMESE"_s}, {0x2D, u"BASQUE"_s},    {0x36, u"AFRIKAANS"_s},
        {0x38, u"FAEROESE"_s},
    };
    return names.value(systemLanguageId & primaryMask);
}

QString codeOfSystem(quint16 systemLanguageId)
{
    const auto found = std::ranges::find_if(languages(), [systemLanguageId](const Language &language) {
        return language.systemIds.contains(systemLanguageId) ||
               language.systemIds.contains(systemLanguageId & primaryMask);
    });
    return found != languages().cend() ? found->code : QString();
}

} // namespace

QString languageIdDigits(quint16 systemLanguageId)
{
    return u"%1"_s.arg(systemLanguageId, 4, 16, QChar(u'0')).toUpper();
}

QString osLanguage(quint16 systemLanguageId)
{
    const QString code = codeOfSystem(systemLanguageId);
    return code.isEmpty() ? systemLanguageName(systemLanguageId) : code;
}

QString GetOsDefaultLanguage(quint16 systemLanguageId, core::RunLog &log)
{
    const QString code = osLanguage(systemLanguageId);
    const QString name = systemLanguageName(systemLanguageId);
    log.WriteRunLog(u"OS Language = "_s + (name.isEmpty() ? code : name) + u", Language ID = "_s +
                    languageIdDigits(systemLanguageId));
    return code;
}

QString DecideLanguage(const QString &osLanguage, const QString &languageSetting)
{
    QString configured = languageSetting.trimmed().toUpper();
    if (configured == "USER"_L1) {
        return configured;
    }
    const bool automatic = configured.isEmpty() || configured == "AUTO"_L1;
    const QString wanted = automatic ? osLanguage : configured;
    return languageOf(wanted) ? wanted : u"ENG"_s;
}

Qt::LayoutDirection layoutDirection(const QString &code)
{
    const Language *language = languageOf(code);
    return language && language->rightToLeft ? Qt::RightToLeft : Qt::LeftToRight;
}

} // namespace language
