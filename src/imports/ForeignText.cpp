#include "imports/ForeignText.h"

#include "core/Error.h"
#include "core/TextUtilities.h"

#include <QHash>
#include <QUtf8StringView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr qint64 pieceBytes = 65536;
constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF", 3);
constexpr QByteArrayView littleMark("\xFF\xFE", 2);
constexpr QByteArrayView bigMark("\xFE\xFF", 2);

// Text without a mark: most letters of most scripts have a zero in UTF-16, and blanks and line breaks have
// one in any.
int utf16Of(QByteArrayView head)
{
    qsizetype even = 0;
    qsizetype odd = 0;
    for (qsizetype i = 0; i < head.size(); ++i) {
        (i % 2 == 0 ? even : odd) += head[i] == '\0' ? 1 : 0;
    }
    if (even == 0 && odd > 0) {
        return utf16LittleCodePage;
    }
    return odd == 0 && even > 0 ? utf16BigCodePage : 0;
}

bool isUtf8(QByteArrayView bytes)
{
    return QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8();
}

// Looked at line by line: no character has a line break in it.
bool isAllUtf8(QIODevice &file)
{
    QByteArray rest;
    for (QByteArray piece = file.read(pieceBytes); !piece.isEmpty(); piece = file.read(pieceBytes)) {
        rest += piece;
        const qsizetype end = rest.lastIndexOf('\n') + 1;
        if (!isUtf8(QByteArrayView(rest).first(end))) {
            return false;
        }
        rest.remove(0, end);
        if (rest.size() > 16 * pieceBytes) { // no list has such lines
            return false;
        }
    }
    return isUtf8(rest);
}

} // namespace

QList<int> offeredCodePages()
{
    return {utf8CodePage,
            utf16LittleCodePage,
            utf16BigCodePage,
            936,
            950,
            932,
            949,
            874,
            1250,
            1251,
            1252,
            1253,
            1254,
            1255,
            1256,
            1257,
            1258};
}

QString codePageName(int codePage)
{
    static const QHash<int, QString> names{{utf8CodePage, u"UTF-8"_s},
                                           {utf16LittleCodePage, u"UTF-16 LE"_s},
                                           {utf16BigCodePage, u"UTF-16 BE"_s},
                                           {936, u"GBK (936)"_s},
                                           {950, u"Big5 (950)"_s},
                                           {932, u"Shift JIS (932)"_s},
                                           {949, u"EUC-KR (949)"_s}};
    return names.value(codePage, u"Windows-"_s + QString::number(codePage));
}

int codePageOf(QIODevice &file, int systemCodePage)
{
    const QByteArray head = file.peek(4096);
    if (head.startsWith(utf8Mark)) {
        return utf8CodePage;
    }
    if (head.startsWith(littleMark)) {
        return utf16LittleCodePage;
    }
    if (head.startsWith(bigMark)) {
        return utf16BigCodePage;
    }
    if (const int utf16 = utf16Of(head)) {
        return utf16;
    }
    return isAllUtf8(file) ? utf8CodePage : systemCodePage;
}

ForeignText::ForeignText(std::unique_ptr<QIODevice> file, int codePage)
    : m_file(std::move(file)), m_codePage(codePage), m_isDoubleByte(core::MyIn(codePage, 932, 936, 949, 950))
{
    if (core::MyIn(codePage, utf16LittleCodePage, utf16BigCodePage)) {
        m_utf16 = std::make_unique<QStringDecoder>(
            codePage == utf16LittleCodePage ? QStringConverter::Utf16LE : QStringConverter::Utf16BE);
    } else if (codePage != utf8CodePage) {
        m_ansi = core::platform::ansiDecoder(codePage);
        if (!m_ansi) {
            throw core::Error(0, u"the system does not know the code page "_s + QString::number(codePage));
        }
    }
}

QByteArray ForeignText::read()
{
    QByteArray piece = m_file->read(pieceBytes);
    if (piece.isEmpty() && !m_file->atEnd()) {
        throw core::Error(0, m_file->errorString());
    }
    if (m_utf16) {
        piece = QString(m_utf16->decode(piece)).toUtf8();
    }
    if (!std::exchange(m_begun, true) && piece.startsWith(utf8Mark)) {
        piece.remove(0, utf8Mark.size());
    }
    return piece;
}

std::optional<QString> ForeignText::decode(QByteArrayView bytes) const
{
    const auto isAscii = [](char byte) { return byte > 0; };
    if (std::ranges::all_of(bytes, isAscii)) {
        return QString::fromLatin1(bytes);
    }
    if (bytes.contains('\0')) {
        return {};
    }
    if (!m_ansi) {
        return isUtf8(bytes) ? std::optional(QString::fromUtf8(bytes)) : std::nullopt;
    }
    const QString text = m_ansi(bytes);
    return text.isNull() ? std::nullopt : std::optional(text);
}

bool ForeignText::isFirstHalf(char byte) const
{
    const auto code = static_cast<unsigned char>(byte);
    const bool halfWidthKana = m_codePage == 932 && code >= 0xA0 && code <= 0xDF;
    return m_isDoubleByte && code > 0x80 && code < 0xFF && !halfWidthKana;
}

int ForeignText::perMille() const
{
    return m_file->size() > 0 ? int(m_file->pos() * 1000 / m_file->size()) : 1000;
}

} // namespace imports
