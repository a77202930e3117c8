#include "language/LanguageChoice.h"

#include "core/TextUtilities.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace language {

namespace {

constexpr std::array languageCodes = {"ENG"_L1, "CHS"_L1, "CHT"_L1, "ID"_L1,  "SPN"_L1, "ARA"_L1, "FRN"_L1,
                                      "HBR"_L1, "TUK"_L1, "KOR"_L1, "POL"_L1, "PTG"_L1, "VN"_L1};

struct PrimaryLanguage
{
    quint8 id; ///< the identifier's low byte
    QLatin1StringView name;
    QLatin1StringView code; ///< empty where we have no texts
};

constexpr std::array primaryLanguages = {
    PrimaryLanguage{0x01, "ARABIC"_L1, "ARA"_L1},
    PrimaryLanguage{0x02, "BULGARIAN"_L1, ""_L1},
    PrimaryLanguage{0x03, "CATALAN"_L1, ""_L1},
    PrimaryLanguage{0x04, "CHINESE"_L1, ""_L1}, // the whole identifier tells which Chinese
    PrimaryLanguage{0x05, "CZECH"_L1, ""_L1},
    PrimaryLanguage{0x06, "DANISH"_L1, ""_L1},
    PrimaryLanguage{0x07, "GERMAN"_L1, ""_L1},
    PrimaryLanguage{0x08, "GREEK"_L1, ""_L1},
    PrimaryLanguage{0x09, ""_L1, "ENG"_L1},
    PrimaryLanguage{0x0A, "SPANISH"_L1, "SPN"_L1},
    PrimaryLanguage{0x0B, "FINNISH"_L1, ""_L1},
    PrimaryLanguage{0x0C, "FRENCH"_L1, "FRN"_L1},
    PrimaryLanguage{0x0D, "HEBREW"_L1, "HBR"_L1},
    PrimaryLanguage{0x0E, "HUNGARIAN"_L1, ""_L1},
    PrimaryLanguage{0x0F, "ICELANDIC"_L1, ""_L1},
    PrimaryLanguage{0x10, "ITALIAN"_L1, ""_L1},
    PrimaryLanguage{0x11, "JAPANESE"_L1, ""_L1},
    PrimaryLanguage{0x12, "KOREAN"_L1, "KOR"_L1},
    PrimaryLanguage{0x13, "DUTCH"_L1, ""_L1},
    PrimaryLanguage{0x14, "NORWEGIAN"_L1, ""_L1},
    PrimaryLanguage{0x15, "POLISH"_L1, "POL"_L1},
    PrimaryLanguage{0x16, "PORTUGUESE"_L1, "PTG"_L1},
    PrimaryLanguage{0x18, "ROMANIAN"_L1, ""_L1},
    PrimaryLanguage{0x19, "RUSSIA"_L1, ""_L1},
    PrimaryLanguage{0x1A, "CROATIAN"_L1, ""_L1},
    PrimaryLanguage{0x1B, "SLOVAK"_L1, ""_L1},
    PrimaryLanguage{0x1C, "ALBANIAN"_L1, ""_L1},
    PrimaryLanguage{0x1D, "SWEDISH"_L1, ""_L1},
    PrimaryLanguage{0x1E, "THAI"_L1, ""_L1},
    PrimaryLanguage{0x1F, "TURKISH"_L1, "TUK"_L1},
    PrimaryLanguage{0x21, "INDONESIAN"_L1, ""_L1},
    PrimaryLanguage{0x22, "UKRAINIAN"_L1, ""_L1},
    PrimaryLanguage{0x23, "BELARUSIAN"_L1, ""_L1},
    PrimaryLanguage{0x24, "SLOVENIAN"_L1, ""_L1},
    PrimaryLanguage{0x25, "ESTONIAN"_L1, ""_L1},
    PrimaryLanguage{0x26, "LATVIAN"_L1, ""_L1},
    PrimaryLanguage{0x27, "LITHUANIAN"_L1, ""_L1},
    PrimaryLanguage{0x29, "FARSI"_L1, ""_L1},
    PrimaryLanguage{0x2A, "VIETNAMESE"_L1, "VN"_L1},
    PrimaryLanguage{0x2D, "BASQUE"_L1, ""_L1},
    PrimaryLanguage{0x36, "AFRIKAANS"_L1, ""_L1},
    PrimaryLanguage{0x38, "FAEROESE"_L1, ""_L1},
};

QLatin1StringView chineseCode(quint16 systemLanguageId)
{
    switch (systemLanguageId) {
    case 2052: // mainland
        return "CHS"_L1;
    case 1028: // Taiwan
    case 3076: // Hong Kong
    case 4100: // Singapore, which writes simplified, but has always been served so
    case 5124: // Macao
        return "CHT"_L1;
    default:
        return {};
    }
}

PrimaryLanguage primaryLanguage(quint16 systemLanguageId)
{
    const auto id = static_cast<quint8>(systemLanguageId & 0xFF);
    const auto *const found = std::find_if(primaryLanguages.begin(), primaryLanguages.end(),
                                           [id](const PrimaryLanguage &row) { return row.id == id; });
    if (found == primaryLanguages.end()) {
        return {};
    }
    constexpr quint8 chinese = 0x04;
    return id == chinese ? PrimaryLanguage{id, found->name, chineseCode(systemLanguageId)} : *found;
}

} // namespace

bool isLanguageCode(const QString &code)
{
    return std::find(languageCodes.begin(), languageCodes.end(), code) != languageCodes.end();
}

QString languageIdDigits(quint16 systemLanguageId)
{
    return u"%1"_s.arg(systemLanguageId, 4, 16, QChar(u'0')).toUpper();
}

QString osLanguage(quint16 systemLanguageId)
{
    const PrimaryLanguage language = primaryLanguage(systemLanguageId);
    return language.code.isEmpty() ? language.name : language.code;
}

QString GetOsDefaultLanguage(quint16 systemLanguageId, core::RunLog &log)
{
    const PrimaryLanguage language = primaryLanguage(systemLanguageId);
    const QLatin1StringView name = language.name.isEmpty() ? language.code : language.name;
    log.WriteRunLog(u"OS Language = "_s + name + u", Language ID = "_s + languageIdDigits(systemLanguageId));
    return osLanguage(systemLanguageId);
}

QString DecideLanguage(const QString &osLanguage, const QString &languageSetting)
{
    QString configured = languageSetting.trimmed().toUpper();
    if (configured == "USER"_L1) {
        return configured;
    }
    const bool automatic = configured.isEmpty() || configured == "AUTO"_L1;
    const QString wanted = automatic ? osLanguage : configured;
    return isLanguageCode(wanted) ? wanted : u"ENG"_s;
}

Qt::LayoutDirection layoutDirection(const QString &code)
{
    return core::MyIn(code, "ARA"_L1, "HBR"_L1) ? Qt::RightToLeft : Qt::LeftToRight;
}

} // namespace language
