#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace language {

/// The font that a language asks for.
struct FontChoice
{
    int characterSet = 1;                       ///< a Windows character set number; 1 is the system's own
    QString fontName = QStringLiteral("Arial"); ///< empty: keep the designed font
    int pointSize = 8;                          ///< at 96 dots an inch
    QStringList substitutes = {}; ///< families of the same region, where fontName is not installed

    /// The families to try in order; empty for the designed font.
    QStringList families() const
    {
        return (fontName.isEmpty() ? QStringList() : QStringList(fontName)) + substitutes;
    }
};

/// A language that windows can be shown in. A new one is a row of languages(), a folder data/lang/<code> and
/// a folder data/help/<code>.
struct Language
{
    QString code;         ///< as the setting and the file names have it
    QString ownName = {}; ///< as its readers call it; empty for "ID"
    QList<quint16> systemIds =
        {};                  ///< Windows language identifiers; up to 0xFF the low byte, whatever the region
    QString textColumn = {}; ///< the column of table "Lang" with its texts; empty where <code>.lan holds them
    QString locale = {};     ///< of the names of months and days; empty to keep the system's
    QString toolkitFile = {}; ///< Qt's own translation; empty where the pack holds those texts, too
    FontChoice font = {};
    bool rightToLeft = false; ///< windows are mirrored
    bool separatesWords = true;
};

/// All of them, in the order in which the options offer them; "ID" last, whose texts are their own keys.
const QList<Language> &languages();

/// The language of a code in upper case; null for "AUTO", "USER" and whatever else has no texts of its own.
/// Only a code that is found may become part of a file name.
const Language *languageOf(const QString &code);

/// The font that a code asks for; the common one where it is no language's.
FontChoice fontChoice(const QString &code);

} // namespace language
