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

// Without an early end, so that the compiler looks at many bytes at once.
bool isAscii(QByteArrayView bytes)
{
    unsigned char all = 0;
    for (const char byte : bytes) {
        all |= static_cast<unsigned char>(byte);
    }
    return (all & 0x80) == 0;
}

constexpr int firstHigh = 0x80;
constexpr QChar none(0xFFFF);

bool isUtf8(QByteArrayView bytes)
{
    return QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8();
}

// True where valid UTF-8 holds a character of two bytes.
bool hasPairs(QByteArrayView utf8)
{
    return std::ranges::any_of(utf8, [](char byte) { return (byte & 0xE0) == 0xC0; });
}

bool isCombining(QChar character)
{
    return character >= QChar(0x0300) && character <= QChar(0x036F);
}

bool isTone(QChar character)
{
    return isCombining(character) &&
           MyIn(character.unicode(), 0x0300, 0x0301, 0x0303, 0x0309, 0x0323); // as the page has them
}

// The letter at a position with the marks behind it.
QStringView letterAt(QStringView text, qsizetype at)
{
    qsizetype end = at + 1;
    while (end < text.size() && isCombining(text[end])) {
        ++end;
    }
    return text.sliced(at, end - at);
}

// The characters of the bytes 0x80 to 0xFF, `none` for half a character or an unassigned byte.
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
    m_singleBytes = QString(m_highBytes).remove(none);
    m_columnRule = m_isDoubleByte ? ColumnRule::doubleByte(m_singleBytes) : ColumnRule::singleByte();
}

// Every fifth common Chinese character looks like a character of two bytes in UTF-8. One of three bytes takes
// one and a half characters of a double-byte code page, and hardly ever comes about by chance.
bool CodePage::isSurelyUtf8(QByteArrayView bytes) const
{
    return isUtf8(bytes) && !(m_isDoubleByte && hasPairs(bytes));
}

DatagramText CodePage::decode(QByteArrayView bytes) const
{
    if (isAscii(bytes)) {
        return {QString::fromLatin1(bytes), m_columnRule};
    }
    const QString text = isSurelyUtf8(bytes) ? QString() : m_decoder(bytes);
    if (!text.isNull()) {
        return {text, m_columnRule};
    }
    return isUtf8(bytes) ? DatagramText{QString::fromUtf8(bytes), ColumnRule()}
                         : DatagramText{decodePieceByPiece(bytes), m_columnRule};
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
    constexpr int vietnamese = 1258;
    return platform::encodeAnsi(m_number, m_number == vietnamese ? withTonesApart(text) : text.toString());
}

// No code page has the question mark as the second half of a character.
bool CodePage::holds(QStringView text) const
{
    return encode(text).count('?') == text.count(u'?');
}

// The Vietnamese code page has most letters without their tones, and the tones as marks behind them. What it
// holds as it stands stays so, also a letter and a tone that a keyboard has typed one by one.
QString CodePage::withTonesApart(QStringView text) const
{
    QString apart;
    for (qsizetype at = 0; at < text.size();) {
        const QStringView letter = letterAt(text, at);
        at += letter.size();
        if (std::ranges::all_of(letter, [this](QChar part) { return isSingleByte(part); })) {
            apart += letter;
            continue;
        }
        QString shape;
        QString tones;
        for (const QChar part : letter.toString().normalized(QString::NormalizationForm_D)) {
            (isTone(part) ? tones : shape) += part;
        }
        apart += shape.normalized(QString::NormalizationForm_C) + tones;
    }
    return apart;
}

QString withTonesOnLetters(const QString &text)
{
    if (std::ranges::none_of(text, isTone)) {
        return text;
    }
    QString whole;
    for (qsizetype at = 0; at < text.size();) {
        const QStringView letter = letterAt(text, at);
        whole += letter.size() > 1 ? letter.toString().normalized(QString::NormalizationForm_C)
                                   : letter.toString();
        at += letter.size();
    }
    return whole;
}

} // namespace core
