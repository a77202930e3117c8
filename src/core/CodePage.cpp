#include "core/CodePage.h"

#include "core/TextUtilities.h"

#include <QUtf8StringView>

#include <algorithm>

namespace core {

namespace {

bool isHigh(char byte)
{
    return (byte & 0x80) != 0;
}

constexpr int firstHigh = 0x80;
constexpr QChar none(0xFFFF);

bool isUtf8(QByteArrayView bytes)
{
    return QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8();
}

/// The characters of the bytes 0x80 to 0xFF, `none` for half a character or an unassigned byte.
QString highBytes(const platform::AnsiDecoder &decoder)
{
    QString characters;
    for (int byte = firstHigh; byte <= 0xFF; ++byte) {
        const char single = static_cast<char>(byte);
        const QString character = decoder(QByteArrayView(&single, 1));
        characters += character.isNull() ? none : character.front();
    }
    return characters;
}

} // namespace

ColumnRule ColumnRule::doubleByte(const QString &singleByteCharacters)
{
    ColumnRule rule;
    rule.m_kind = Kind::DoubleByte;
    rule.m_singleByteCharacters = singleByteCharacters;
    return rule;
}

ColumnRule ColumnRule::singleByte()
{
    ColumnRule rule;
    rule.m_kind = Kind::SingleByte;
    return rule;
}

int ColumnRule::columnsBeyondAscii(char32_t code) const
{
    constexpr char32_t firstOfTwo = 255;
    switch (m_kind) {
    case Kind::ByCode:
        return code < firstOfTwo ? 1 : 2;
    case Kind::SingleByte:
        return 1;
    case Kind::DoubleByte:
        break;
    }
    return code <= 0xFFFF && m_singleByteCharacters.contains(QChar(code)) ? 1 : 2;
}

CodePage::CodePage(int number) : m_number(number), m_decoder(platform::ansiDecoder(number))
{
    if (!m_decoder) {
        m_number = 1252;
        m_decoder = platform::ansiDecoder(m_number);
    }
    m_isDoubleByte = MyIn(m_number, 932, 936, 949, 950);
    m_highBytes = highBytes(m_decoder);
    m_columnRule =
        m_isDoubleByte ? ColumnRule::doubleByte(QString(m_highBytes).remove(none)) : ColumnRule::singleByte();
}

QString CodePage::decode(QByteArrayView bytes) const
{
    if (std::none_of(bytes.begin(), bytes.end(), isHigh)) {
        return QString::fromLatin1(bytes);
    }
    if (isUtf8(bytes)) {
        return QString::fromUtf8(bytes);
    }
    const QString text = m_decoder(bytes);
    return text.isNull() ? decodePieceByPiece(bytes) : text;
}

ColumnRule CodePage::columnRule(QByteArrayView bytes) const
{
    return isUtf8(bytes) ? ColumnRule() : m_columnRule;
}

// An undecodable pair of high bytes is an unassigned character; a high byte before an ASCII one is half a
// character that a sender cut at the end of a field, and takes nothing with it.
QString CodePage::decodePieceByPiece(QByteArrayView bytes) const
{
    QString text;
    for (qsizetype at = 0; at < bytes.size();) {
        const QChar single = ofSingleByte(bytes[at]);
        if (single != none || !m_isDoubleByte || at + 1 == bytes.size()) {
            text += single != none ? single : u'?';
            ++at;
            continue;
        }
        const QString pair = m_decoder(bytes.sliced(at, 2));
        const qsizetype taken = !pair.isNull() || isHigh(bytes[at + 1]) ? 2 : 1;
        text += pair.isNull() ? QString(taken, u'?') : pair;
        at += taken;
    }
    return text;
}

QChar CodePage::ofSingleByte(char byte) const
{
    const int code = static_cast<unsigned char>(byte);
    return isHigh(byte) ? m_highBytes.at(code - firstHigh) : QChar(code);
}

QByteArray CodePage::encode(QStringView text) const
{
    return platform::encodeAnsi(m_number, text);
}

} // namespace core
