#pragma once

#include "core/platform.h"

#include <QByteArray>
#include <QString>

namespace core {

/// How many byte columns a character takes in a fixed-column record: the bytes of its code.
class ColumnRule
{
public:
    /// By the character's own code, for text from no code page: one below 255, two for any other.
    ColumnRule() = default;

    /// A Far Eastern code page: two, but for ASCII and the given characters, which are single bytes too.
    static ColumnRule doubleByte(const QString &singleByteCharacters);
    /// Any other code page: always one.
    static ColumnRule singleByte();

    int columnsOf(char32_t code) const { return code < 0x80 ? 1 : columnsBeyondAscii(code); }

private:
    enum class Kind { ByCode, DoubleByte, SingleByte };
    int columnsBeyondAscii(char32_t code) const;

    Kind m_kind = Kind::ByCode;
    QString m_singleByteCharacters;
};

/// The text of one datagram and the rule by which its columns are counted (docs/formats.md). Letters that
/// came in two bytes, a letter and its tone, are still two: what is taken out of the text is put together
/// with withTonesOnLetters().
struct DatagramText
{
    QString text;
    ColumnRule columns;
};

/// Letters and the Vietnamese tone marks behind them as one character each, where there is one.
QString withTonesOnLetters(const QString &text);

/// One ANSI code page: turns the bytes of the network into text and back.
class CodePage
{
public:
    /// A Windows code page number, such as 936 or 1252; an unknown one acts as 1252.
    explicit CodePage(int number);

    int number() const { return m_number; }

    /// The bytes as UTF-8 (docs/formats.md tells when) or as this code page. An undecodable byte becomes "?",
    /// so that every later byte keeps its column.
    DatagramText decode(QByteArrayView bytes) const;

    /// Characters that the code page lacks become "?".
    QByteArray encode(QStringView text) const;
    /// The code page lacks no character of the text.
    bool holds(QStringView text) const;
    /// The character is one of the code page's single bytes.
    bool isSingleByte(QChar character) const
    {
        return character.unicode() < 0x80 || m_singleBytes.contains(character);
    }

private:
    /// They are UTF-8 whatever they would mean in this code page.
    bool isSurelyUtf8(QByteArrayView bytes) const;
    QString decodePieceByPiece(QByteArrayView bytes) const;
    QChar ofSingleByte(char byte) const;
    QString withTonesApart(QStringView text) const;

    int m_number;
    platform::AnsiDecoder m_decoder;
    bool m_isDoubleByte;
    QString m_highBytes;   // the characters of 0x80 to 0xFF
    QString m_singleBytes; // those of them that are characters
    ColumnRule m_columnRule;
};

} // namespace core
