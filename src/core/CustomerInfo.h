#pragma once

#include "core/CodePage.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace core {

/// The customer-information record that is forwarded to the unit or server: texts of fixed length, one byte a
/// column, and a 16-bit flag at the end (docs/formats.md has the table).
struct CustomerInfo
{
    static constexpr int size = 3265;

    struct Field
    {
        int width = 0; ///< bytes
        QString text;
        QLatin1StringView column = {}; ///< of the customer table
    };
    QList<Field> fields;
    quint16 doNotSend = 0; ///< not 0: the record stays here

    /// The single-byte image, always `size` bytes: texts are padded with blanks, what is too long is cut
    /// between two characters.
    QByteArray toBytes(const CodePage &codePage) const;
};

} // namespace core
