#pragma once

#include <QString>
#include <QStringList>

namespace language {

/// The font that a language asks for.
struct FontChoice
{
    int characterSet = 1; ///< a Windows character set number; 1 is the system's own
    QString fontName;     ///< empty: keep the designed font
    int pointSize = 8;    ///< at 96 dots an inch
};

/// The font choice for a language code; one that the table lacks gets the common row.
FontChoice fontChoice(const QString &languageCode);

/// The families to try in order, the told name first; empty for the designed font.
QStringList fontFamilies(const FontChoice &choice);

} // namespace language
