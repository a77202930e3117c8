#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringList>

#include <memory>
#include <string>

struct lxw_workbook;
struct lxw_worksheet;

namespace customers {

/// A workbook (.xlsx) with one sheet, written row by row in constant memory. Every cell is a text, whatever
/// it looks like. Errors are thrown as core::Error.
class SpreadsheetWriter
{
public:
    /// `path` names the file that close() makes.
    explicit SpreadsheetWriter(const QString &path);
    /// Without close() nothing is left of the sheet.
    ~SpreadsheetWriter();
    Q_DISABLE_COPY_MOVE(SpreadsheetWriter)

    /// The first row: stays in sight and filters. Column D is given the text format.
    void writeHeadings(const QStringList &headings);
    void beginRow() { ++m_row; }
    /// Of a text in UTF-8, at most the 32,767 characters that a cell holds; control characters become blanks.
    void writeCell(int column, QByteArrayView utf8);
    /// Packs the file, which takes seconds for a large sheet. May be called on another thread.
    void close();

private:
    struct Free
    {
        void operator()(lxw_workbook *workbook) const;
    };
    void requireSpace() const;

    std::unique_ptr<lxw_workbook, Free> m_workbook;
    lxw_worksheet *m_sheet = nullptr;
    std::string m_text; ///< of the cell at hand
    quint32 m_row = 0;
    quint16 m_columns = 0;
};

} // namespace customers
