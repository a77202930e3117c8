#include "imports/WorkbookRows.h"

#include "core/Error.h"
#include "imports/DelimitedRows.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr qint64 megabyte = 1 << 20;
constexpr qint64 mostOfSmallPart = 16 * megabyte;
constexpr qint64 mostOfTexts = 512 * megabyte;
constexpr qint64 mostOfSheet = 4096 * megabyte; // goes by without being kept
constexpr qsizetype mostSheets = 256;
constexpr qsizetype mostTexts = 4'000'000;
constexpr qint64 mostTextCharacters = 128 * megabyte;

XmlPart xmlOf(ZipFile &zip)
{
    return XmlPart([&zip] { return zip.read(); });
}

// Where the sheets stand, by their numbers in the workbook.
QHash<QString, QString> targetsIn(ZipFile &workbook)
{
    QHash<QString, QString> targets;
    if (workbook.open(u"xl/_rels/workbook.xml.rels"_s, mostOfSmallPart)) {
        XmlPart xml = xmlOf(workbook);
        while (xml.next()) {
            if (xml.begins("Relationship"_L1)) {
                const QString target = xml.attribute("Target"_L1);
                targets.insert(xml.attribute("Id"_L1),
                               target.startsWith(u'/') ? target.mid(1) : u"xl/"_s + target);
            }
        }
    }
    return targets;
}

} // namespace

QList<Sheet> sheetsOf(ZipFile &workbook)
{
    const QHash<QString, QString> targets = targetsIn(workbook);
    if (!workbook.open(u"xl/workbook.xml"_s, mostOfSmallPart)) {
        throw core::Error(0, u"the packed file holds no workbook"_s);
    }
    QList<Sheet> sheets;
    XmlPart xml = xmlOf(workbook);
    while (xml.next()) {
        const QString part = targets.value(xml.attribute("r:id"_L1));
        const bool isHidden = xml.attribute("state"_L1).contains("hidden"_L1, Qt::CaseInsensitive);
        if (xml.begins("sheet"_L1) && !isHidden && !part.isEmpty() && sheets.size() < mostSheets) {
            sheets.append({xml.attribute("name"_L1), part});
        }
    }
    if (sheets.isEmpty()) {
        throw core::Error(0, u"the workbook holds no sheet"_s);
    }
    return sheets;
}

WorkbookRows::WorkbookRows(std::unique_ptr<ZipFile> workbook, const QString &sheetPart)
    : m_zip(std::move(workbook))
{
    if (m_zip->open(u"xl/workbook.xml"_s, mostOfSmallPart)) {
        XmlPart xml = xmlOf(*m_zip);
        while (xml.next()) {
            const QString since1904 = xml.attribute("date1904"_L1);
            if (xml.begins("workbookPr"_L1) && (since1904 == "1"_L1 || since1904 == "true"_L1)) {
                m_formats.setDatesSince1904();
            }
        }
    }
    if (m_zip->open(u"xl/styles.xml"_s, mostOfSmallPart)) {
        XmlPart styles = xmlOf(*m_zip);
        m_formats.read(styles);
    }
    readTexts();
    if (!m_zip->open(sheetPart, mostOfSheet)) {
        throw core::Error(0, u"the workbook lacks the sheet "_s + sheetPart);
    }
    m_sheet.emplace([this] { return m_zip->read(); });
}

void WorkbookRows::readTexts()
{
    if (!m_zip->open(u"xl/sharedStrings.xml"_s, mostOfTexts)) {
        return; // a sheet of numbers alone has none
    }
    m_sheet.emplace([this] { return m_zip->read(); });
    qint64 characters = 0;
    while (m_sheet->next()) {
        if (m_sheet->begins("si"_L1)) {
            m_texts.append(textUntil("si"_L1));
            characters += m_texts.constLast().size();
            if (m_texts.size() > mostTexts || characters > mostTextCharacters) {
                throw core::Error(0, u"the workbook holds too many texts"_s);
            }
        }
    }
    m_zip->finish();
}

// The text of an element, without what only tells how to read it aloud. A longer one than a cell may hold is
// given with one character too many.
QString WorkbookRows::textUntil(QLatin1StringView element)
{
    QString text;
    bool inText = false;
    bool readAloud = false;
    const bool plain = element == "v"_L1;
    while (m_sheet->next() && !m_sheet->ends(element)) {
        if (m_sheet->begins("rPh"_L1) || m_sheet->ends("rPh"_L1)) {
            readAloud = m_sheet->begins("rPh"_L1);
        } else if (m_sheet->begins("t"_L1) || m_sheet->ends("t"_L1)) {
            inText = m_sheet->begins("t"_L1);
        } else if (m_sheet->xml().isCharacters() && (plain || (inText && !readAloud)) &&
                   text.size() <= mostCellCharacters) {
            text += m_sheet->xml().text().left(mostCellCharacters + 1);
        }
    }
    return text;
}

std::optional<SourceRow> WorkbookRows::next()
{
    SourceRow row;
    while (m_sheet->next() && !m_sheet->ends("sheetData"_L1)) {
        if (m_sheet->begins("row"_L1)) {
            const qint64 given = m_sheet->attribute("r"_L1).toLongLong();
            m_number = given > 0 ? given : m_number + 1;
            row = {.number = m_number};
            m_column = 0;
        } else if (m_sheet->begins("c"_L1)) {
            readCell(row);
        } else if (m_sheet->ends("row"_L1) && (row.trouble != RowTrouble::None || !isBlank(row.cells))) {
            return row;
        }
    }
    m_zip->finish();
    return {};
}

void WorkbookRows::readCell(SourceRow &row)
{
    const int given = columnOf(m_sheet->attribute("r"_L1));
    const int column = given >= 0 ? given : m_column; // of those without one each stands beside the last
    m_column = column + 1;
    const QString type = m_sheet->attribute("t"_L1);
    const int style = m_sheet->attribute("s"_L1).toInt();
    QString text;
    while (m_sheet->next() && !m_sheet->ends("c"_L1)) {
        if (m_sheet->begins("v"_L1)) {
            const QString value = textUntil("v"_L1);
            text = type == "s"_L1                     ? m_texts.value(value.toInt())
                   : type == "e"_L1                   ? QString()
                   : type.isEmpty() || type == "n"_L1 ? m_formats.shown(value.trimmed(), style)
                                                      : value;
        } else if (m_sheet->begins("is"_L1)) {
            text = textUntil("is"_L1);
        }
    }
    put(row, column, text);
}

void WorkbookRows::put(SourceRow &row, int column, const QString &text) const
{
    if (text.isEmpty()) {
        return;
    }
    if (column >= mostColumns || text.size() > mostCellCharacters) {
        row.trouble = column >= mostColumns ? RowTrouble::Columns : RowTrouble::Unclosed;
        return;
    }
    while (row.cells.size() <= column) {
        row.cells.append(QString());
    }
    row.cells[column] = text;
}

} // namespace imports
