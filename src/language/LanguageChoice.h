#pragma once

#include "core/RunLog.h"
#include "language/Languages.h"

#include <QString>

namespace language {

/// What the start-up settled about the language, for the rest of the run (see LanguagePack::iniLanguage).
struct LanguageState
{
    QString code;         ///< the current language: one of the thirteen codes, or "USER"
    QString osLanguage;   ///< the operating system's language as GetOsDefaultLanguage tells it
    QString osLanguageId; ///< its identifier as 4 hexadecimal digits
    FontChoice font;      ///< the font that the current language asks for
};

/// A Windows language identifier as 4 hexadecimal digits, upper case.
QString languageIdDigits(quint16 systemLanguageId);

/// The operating system's language: a code ("CHS") where we have one, else a name ("GERMAN"), empty for a
/// language that the table lacks.
QString osLanguage(quint16 systemLanguageId);
/// The same, told to the run log.
QString GetOsDefaultLanguage(quint16 systemLanguageId, core::RunLog &log);

/// The code of the language to run in. The setting is a code in any letter case, empty or "AUTO" for the
/// operating system's language, and "ENG" for whatever has no texts.
QString DecideLanguage(const QString &osLanguage, const QString &languageSetting);

/// Arabic and Hebrew windows are mirrored.
Qt::LayoutDirection layoutDirection(const QString &code);

} // namespace language
