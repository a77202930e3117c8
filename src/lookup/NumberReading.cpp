#include "lookup/NumberReading.h"

#include "lookup/PhoneNumbers.h"

using namespace Qt::StringLiterals;

namespace lookup {

void appendNumbers(QString &text, const store::Row &row, int first, int count)
{
    for (int column = 0; column < count; ++column) {
        if (column > 0) {
            text += u',';
        }
        row.appendTo(text, first + column);
    }
}

NumberReading::NumberReading(core::RunLog &log, const core::CodePage &codePage, const QString &file,
                             const QString &table, const QStringList &numberColumns)
    : m_log(log), m_codePage(codePage), m_database(file), m_table(table), m_columns(numberColumns.join(u',')),
      m_columnCount(int(numberColumns.size()))
{}

bool NumberReading::readOn()
{
    if (!m_rowsEnded) {
        readRows();
    }
    return m_rowsEnded && m_entries.finishSome();
}

void NumberReading::readRows()
{
    constexpr int rowsAtOnce = 10000;
    int rows = 0;
    const QString select = u"select rowid,SN,%1 from %2 where rowid>%3 order by rowid limit %4"_s;
    m_database.forEachRow(select.arg(m_columns, m_table).arg(m_lastKey).arg(rowsAtOnce),
                          [&](const store::Row &row) {
                              ++rows;
                              append(row);
                          });
    m_hasRows = m_hasRows || rows > 0;
    m_rowsEnded = rows < rowsAtOnce;
    if (!m_hasRows) {
        m_entries.append({}, 0);
    }
    if (m_rowsEnded && m_entries.isEmpty()) {
        throw core::Error(0, u"no row holds a number: "_s + m_table);
    }
}

void NumberReading::append(const store::Row &row)
{
    constexpr int firstColumn = 2;
    m_lastKey = row.key(0);
    m_numbers.resize(0);
    appendNumbers(m_numbers, row, firstColumn, m_columnCount);
    for (const QStringView piece : phoneNumberPieces(m_log, m_codePage, m_numbers)) {
        m_entries.append(piece, row.integer(1));
    }
}

} // namespace lookup
