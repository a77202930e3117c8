#include "core/CodePage.h"

#include "core/TextUtilities.h"

#include <QStringDecoder>
#include <QUtf8StringView>

#include <algorithm>

namespace core {

namespace {

bool isAscii(QByteArrayView bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) == 0; });
}

} // namespace

CodePage::CodePage(int number) : m_number(number), m_name("windows-" + QByteArray::number(number))
{
    if (!QStringDecoder(m_name.constData()).isValid()) {
        m_number = 1252;
        m_name = "windows-1252";
    }
}

ColumnRule CodePage::columnRule() const
{
    return MyIn(m_number, 932, 936, 949, 950) ? ColumnRule::DoubleByte : ColumnRule::SingleByte;
}

QString CodePage::decode(QByteArrayView bytes) const
{
    if (isAscii(bytes)) {
        return QString::fromLatin1(bytes);
    }
    if (QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8()) {
        return QString::fromUtf8(bytes);
    }
    QStringDecoder decoder(m_name.constData(), QStringConverter::Flag::Stateless);
    const QString text = decoder.decode(bytes);
    return decoder.hasError() || text.contains(QChar::ReplacementCharacter) ? decodeByteByByte(bytes) : text;
}

// Feeding single bytes tells how many of them each replacement character stands for: an invalid lead byte
// must take one column only, whereas an unassigned pair takes two.
QString CodePage::decodeByteByByte(QByteArrayView bytes) const
{
    QStringDecoder decoder(m_name.constData());
    QString text;
    bool pending = false;
    for (const char &byte : bytes) {
        QString decoded = decoder.decode(QByteArrayView(&byte, 1));
        const bool oneByteFailed =
            decoded.startsWith(QChar::ReplacementCharacter) && (!pending || decoded.size() > 1);
        if (oneByteFailed) {
            decoded.front() = u'?';
        }
        pending = decoded.isEmpty();
        text += decoded;
    }
    if (pending) {
        text += u'?';
    }
    return text;
}

QByteArray CodePage::encode(QStringView text) const
{
    QStringEncoder encoder(m_name.constData(), QStringConverter::Flag::Stateless);
    return encoder.encode(text);
}

} // namespace core
