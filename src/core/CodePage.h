#pragma once

#include <QByteArray>
#include <QString>

namespace core {

/// How many byte columns a character takes in a fixed-column record.
enum class ColumnRule {
    DoubleByte, ///< one below code 255, two for any other: the Far Eastern code pages
    SingleByte, ///< one, and two only for Far Eastern characters, which no such code page holds
};

/// One ANSI code page: turns the bytes of the network into text and back.
class CodePage
{
public:
    /// A Windows code page number, such as 936 or 1252; an unknown one acts as 1252.
    explicit CodePage(int number);

    int number() const { return m_number; }
    ColumnRule columnRule() const;

    /// Valid UTF-8 with a character beyond ASCII is taken as UTF-8, all else as this code page. An
    /// undecodable byte becomes "?", so that every later byte keeps its column.
    QString decode(QByteArrayView bytes) const;

    /// Characters that the code page lacks become "?".
    QByteArray encode(QStringView text) const;

private:
    QString decodeByteByByte(QByteArrayView bytes) const;

    int m_number;
    QByteArray m_name;
};

} // namespace core
