#include "core/CustomerInfo.h"

#include "core/TextUtilities.h"

#include <QtEndian>

namespace core {

namespace {

// A text is cut by its characters: half of a double-byte one would spoil the column behind it.
QByteArray fixedText(const CustomerInfo::Field &field, const CodePage &codePage)
{
    QByteArray bytes = codePage.encode(field.text);
    if (bytes.size() > field.width) {
        const QStringView text(field.text);
        bytes.clear();
        for (qsizetype at = 0; at < text.size();) {
            const qsizetype units = codePointAt(text, at).units;
            const QByteArray character = codePage.encode(text.mid(at, units));
            if (bytes.size() + character.size() > field.width) {
                break;
            }
            bytes += character;
            at += units;
        }
    }
    return bytes.leftJustified(field.width, ' ');
}

} // namespace

QByteArray CustomerInfo::toBytes(const CodePage &codePage) const
{
    QByteArray image;
    image.reserve(size);
    for (const Field &field : fields) {
        image += fixedText(field, codePage);
    }
    constexpr int flagBytes = sizeof doNotSend;
    image = image.leftJustified(size - flagBytes, ' ', true);
    image.resize(size);
    qToLittleEndian(doNotSend, image.data() + size - flagBytes);
    return image;
}

} // namespace core
