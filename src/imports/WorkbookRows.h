#pragma once

#include "imports/RowSource.h"
#include "imports/SheetCells.h"
#include "imports/ZipFile.h"

namespace imports {

/// A sheet of a workbook and the part of the packed file that holds it.
struct Sheet
{
    QString name;
    QString part;
};

/// Those that can be seen, in their order. Throws core::Error where the file is no workbook.
QList<Sheet> sheetsOf(ZipFile &workbook);

/// The rows of a sheet of an .xlsx workbook. Cells hold what the sheet shows of them, as text.
class WorkbookRows : public RowSource
{
public:
    /// Reads what the cells refer to. Throws core::Error.
    WorkbookRows(std::unique_ptr<ZipFile> workbook, const QString &sheetPart);

    std::optional<SourceRow> next() override;
    int perMille() const override { return m_zip->perMille(); }

private:
    void readTexts();
    void readCell(SourceRow &row);
    QString textUntil(QLatin1StringView element);
    void put(SourceRow &row, int column, const QString &text) const;

    std::unique_ptr<ZipFile> m_zip;
    QStringList m_texts; ///< shared by the cells
    NumberFormats m_formats;
    std::optional<XmlPart> m_sheet;
    qint64 m_number = 0;
    int m_column = 0; ///< of the next cell
};

} // namespace imports
