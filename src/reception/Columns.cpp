#include "reception/Columns.h"

#include "core/TextUtilities.h"

#include <algorithm>

namespace reception {

namespace {

// Without an early end, so that the compiler looks at many letters at once.
bool isAsciiAlone(QStringView text)
{
    unsigned all = 0;
    for (const QChar character : text) {
        all |= character.unicode();
    }
    return all < 0x80;
}

} // namespace

Columns::Columns(QStringView text, const core::ColumnRule &rule) : m_text(text), m_isAscii(isAsciiAlone(text))
{
    if (m_isAscii) {
        return;
    }
    m_ends.reserve(static_cast<size_t>(2 * text.size() + 1));
    m_ends.push_back(0);
    for (qsizetype at = 0; at < text.size();) {
        const core::CodePoint character = core::codePointAt(text, at);
        if (rule.columnsOf(character.code) > 1) {
            m_ends.push_back(at);
        }
        at += character.units;
        m_ends.push_back(at);
    }
}

qsizetype Columns::endOf(qsizetype column) const
{
    const qsizetype counted = std::clamp<qsizetype>(column, 0, count());
    return m_isAscii ? counted : m_ends[static_cast<size_t>(counted)];
}

QStringView Columns::mid(qsizetype startCol, qsizetype width) const
{
    const qsizetype first = endOf(startCol - 1);
    const qsizetype end = endOf(startCol + width - 1);
    return first < end ? m_text.sliced(first, end - first) : QStringView();
}

qsizetype ByteColumns(QStringView text, const core::ColumnRule &rule)
{
    return Columns(text, rule).count();
}

QString MidByCols(QStringView text, qsizetype startCol, qsizetype width, const core::ColumnRule &rule)
{
    return Columns(text, rule).mid(startCol, width).toString();
}

} // namespace reception
