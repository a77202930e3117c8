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

/// One ANSI code page: turns the bytes of the network into text and back.
class CodePage
{
public:
    /// A Windows code page number, such as 936 or 1252; an unknown one acts as 1252.
    explicit CodePage(int number);

    int number() const { return m_number; }

    /// Valid UTF-8 with a character beyond ASCII is taken as UTF-8, all else as this code page. An
    /// undecodable byte becomes "?", so that every later byte keeps its column.
    QString decode(QByteArrayView bytes) const;
    /// How the columns of these bytes are counted once they are decoded.
    ColumnRule columnRule(QByteArrayView bytes) const;

    /// Characters that the code page lacks become "?".
    QByteArray encode(QStringView text) const;

private:
    QString decodePieceByPiece(QByteArrayView bytes) const;
    QChar ofSingleByte(char byte) const;

    int m_number;
    platform::AnsiDecoder m_decoder;
    bool m_isDoubleByte;
    QString m_highBytes; // the characters of 0x80 to 0xFF
    ColumnRule m_columnRule;
};

} // namespace core
