#pragma once

#include "core/platform.h"

#include <QIODevice>
#include <QStringDecoder>

#include <memory>
#include <optional>

namespace imports {

/// Windows' numbers of the code pages that every system knows.
inline constexpr int utf8CodePage = 65001;
inline constexpr int utf16LittleCodePage = 1200;
inline constexpr int utf16BigCodePage = 1201;

/// The code pages that a file may be said to have.
QList<int> offeredCodePages();
/// What the operator reads of one.
QString codePageName(int codePage);
/// What a file's bytes speak for: its mark, zeros between its letters, UTF-8 where all of it is valid, and
/// otherwise the system's own. Reads all of it.
int codePageOf(QIODevice &file, int systemCodePage);

/// The bytes of a text in pieces, and what they mean in its code page. UTF-16 arrives as UTF-8, so that line
/// breaks, quotation marks and separators are the same single bytes in every text.
class ForeignText
{
public:
    ForeignText(std::unique_ptr<QIODevice> file, int codePage);

    /// The next piece; empty behind the last. Throws core::Error.
    QByteArray read();
    /// Nothing where some byte is no character.
    std::optional<QString> decode(QByteArrayView bytes) const;
    /// The byte is the first half of a character whose second half may look like a separator.
    bool isFirstHalf(char byte) const;
    int perMille() const;

private:
    std::unique_ptr<QIODevice> m_file;
    int m_codePage;
    core::platform::AnsiDecoder m_ansi; ///< empty: UTF-8
    std::unique_ptr<QStringDecoder> m_utf16;
    bool m_isDoubleByte;
    bool m_begun = false;
};

} // namespace imports
