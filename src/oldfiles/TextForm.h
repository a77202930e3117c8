#pragma once

#include "core/CodePage.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace oldfiles {

/// How a file keeps its texts: Jet 4 in UTF-16, in part with one byte a character, Jet 3 in a code page.
/// Never fails: what is no character becomes U+FFFD, or "?" in a code page.
class TextForm
{
public:
    TextForm() = default; ///< Jet 4
    explicit TextForm(int codePage);

    /// A text or a whole memo.
    QString value(QByteArrayView bytes) const;
    /// A name of a table, column or index.
    QString name(QByteArrayView bytes) const;

private:
    QString fromCodePage(QByteArrayView bytes) const;

    std::optional<core::CodePage> m_codePage;
    core::platform::AnsiDecoder m_decoder;
};

} // namespace oldfiles
