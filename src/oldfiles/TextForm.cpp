#include "oldfiles/TextForm.h"

#include <QtEndian>

using namespace Qt::StringLiterals;

namespace oldfiles {

namespace {

// Half of a surrogate pair is no character, and no database would store it.
void replaceLoneSurrogates(QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate()) {
            continue;
        }
        const bool pair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (pair) {
            ++i;
        } else {
            text[i] = QChar::ReplacementCharacter;
        }
    }
}

QString fromUtf16(QByteArrayView bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<char16_t>(bytes.data(), text.size(), text.data());
    replaceLoneSurrogates(text);
    return text;
}

// Runs of one byte and of two bytes a character, parted by NUL bytes; the first run has one.
QString fromCompressed(QByteArrayView bytes)
{
    if (!bytes.contains('\0')) {
        return QString::fromLatin1(bytes);
    }
    QString text;
    text.reserve(bytes.size());
    bool wide = false;
    for (qsizetype at = 0; at < bytes.size();) {
        if (bytes[at] == '\0') {
            wide = !wide;
            ++at;
        } else if (!wide) {
            text += QLatin1Char(bytes[at]);
            ++at;
        } else {
            if (at + 1 < bytes.size()) {
                text += QChar(qFromLittleEndian<char16_t>(bytes.data() + at));
            }
            at += 2;
        }
    }
    replaceLoneSurrogates(text);
    return text;
}

} // namespace

TextForm::TextForm(int codePage)
    : m_codePage(core::CodePage(codePage)), m_decoder(core::platform::ansiDecoder(m_codePage->number()))
{}

QString TextForm::value(QByteArrayView bytes) const
{
    constexpr QByteArrayView compressed("\xFF\xFE");
    if (bytes.isEmpty()) {
        return u""_s;
    }
    if (m_codePage) {
        return fromCodePage(bytes);
    }
    return bytes.startsWith(compressed) ? fromCompressed(bytes.sliced(compressed.size())) : fromUtf16(bytes);
}

QString TextForm::name(QByteArrayView bytes) const
{
    return m_codePage ? fromCodePage(bytes) : fromUtf16(bytes);
}

// The decoder itself: CodePage would first take the bytes for UTF-8, as datagrams may be.
QString TextForm::fromCodePage(QByteArrayView bytes) const
{
    const QString text = m_decoder(bytes);
    return text.isNull() ? m_codePage->decode(bytes).text : text;
}

} // namespace oldfiles
