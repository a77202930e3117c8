#include "core/platform.h"

#include <qt_windows.h>

namespace core::platform {

AnsiDecoder ansiDecoder(int codePage)
{
    const UINT page = UINT(codePage);
    if (!IsValidCodePage(page)) {
        return {};
    }
    return [page](QByteArrayView bytes) {
        QString text(bytes.size(), Qt::Uninitialized); // no code page makes more characters than bytes
        const int length = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), int(bytes.size()),
                                               reinterpret_cast<wchar_t *>(text.data()), int(text.size()));
        return length > 0 ? text.first(length) : QString();
    };
}

QByteArray encodeAnsi(int codePage, QStringView text)
{
    if (codePage == CP_UTF8) { // it takes no default character, and up to three bytes a unit
        return text.toUtf8();
    }
    constexpr qsizetype maxBytes = 2; // of one character
    QByteArray bytes(text.size() * maxBytes, Qt::Uninitialized);
    const int length = WideCharToMultiByte(UINT(codePage), WC_NO_BEST_FIT_CHARS,
                                           reinterpret_cast<const wchar_t *>(text.utf16()), int(text.size()),
                                           bytes.data(), int(bytes.size()), "?", nullptr);
    return bytes.first(qMax(length, 0));
}

} // namespace core::platform
