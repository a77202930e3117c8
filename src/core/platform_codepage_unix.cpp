#include "core/platform.h"

#include <QList>
#include <QStringDecoder>
#include <QStringEncoder>

#include <memory>

namespace core::platform {

namespace {

constexpr auto stateless = QStringConverter::Flag::Stateless;

QByteArray converterName(int codePage)
{
    return "windows-" + QByteArray::number(codePage);
}

} // namespace

AnsiDecoder ansiDecoder(int codePage)
{
    const QByteArray name = converterName(codePage);
    auto decoder = std::make_shared<QStringDecoder>(name.constData(), stateless);
    if (!decoder->isValid()) {
        return {};
    }
    // A decoder reports its first error for good, and cannot be assigned to: its converter knows its address.
    return [name, decoder](QByteArrayView bytes) mutable {
        QString text = decoder->decode(bytes);
        if (!decoder->hasError()) {
            return text;
        }
        decoder = std::make_shared<QStringDecoder>(name.constData(), stateless);
        return QString();
    };
}

// The converter's own substitute is a control character, or even an unassigned one, by code page.
QByteArray encodeAnsi(int codePage, QStringView text)
{
    const QByteArray name = converterName(codePage);
    QStringEncoder whole(name.constData(), stateless);
    QByteArray bytes = whole.encode(text);
    if (!whole.hasError()) {
        return bytes;
    }
    bytes.clear();
    for (const char32_t code : text.toUcs4()) {
        QStringEncoder one(name.constData(), stateless);
        const QByteArray piece = one.encode(QString::fromUcs4(&code, 1));
        bytes += one.hasError() ? QByteArray("?") : piece;
    }
    return bytes;
}

} // namespace core::platform
