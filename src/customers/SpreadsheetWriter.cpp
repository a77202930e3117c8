#include "customers/SpreadsheetWriter.h"

#include "core/Error.h"
#include "core/TextUtilities.h"

#include <QDir>
#include <QRegularExpression>
#include <QStorageInfo>

#include <xlsxwriter.h>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace customers {

namespace {

constexpr qsizetype cellLimit = 32767;

void check(lxw_error error)
{
    if (error != LXW_NO_ERROR) {
        throw core::Error(int(error), QString::fromUtf8(lxw_strerror(error)));
    }
}

// True for a text that needs no escaping, as nearly every text does.
bool isPlain(QByteArrayView utf8)
{
    const auto isControl = [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; };
    return utf8.size() <= cellLimit && std::ranges::none_of(utf8, isControl) && !utf8.contains("_x") &&
           !utf8.contains("\xEF\xBF") && QUtf8StringView(utf8.data(), utf8.size()).isValidUtf8();
}

// Replaces what XML forbids by blanks: spreadsheets would refuse the whole file.
QString withoutForbidden(QString text)
{
    text.replace("\r\n"_L1, "\n"_L1);
    for (qsizetype i = 0; i < text.size(); i += core::codePointAt(text, i).units) {
        const char32_t code = core::codePointAt(text, i).code;
        const bool control = code < U' ' && code != U'\t' && code != U'\n';
        if (control || code == 0xFFFE || code == 0xFFFF || QChar::isSurrogate(code)) {
            text[i] = u' ';
        }
    }
    return text;
}

// Fit for a cell. A spreadsheet reads "_x0041_" as the character of that code, unless its "_" is written so.
QByteArray cellText(QByteArrayView utf8)
{
    static const QRegularExpression code(u"_(?=x[0-9A-Fa-f]{4}_)"_s);
    QString text = withoutForbidden(QString::fromUtf8(utf8));
    text.truncate(cellLimit - (text.size() > cellLimit && text[cellLimit - 1].isHighSurrogate() ? 1 : 0));
    const QString escaped = QString(text).replace(code, u"_x005F_"_s);
    return (escaped.size() <= cellLimit ? escaped : text).toUtf8();
}

} // namespace

void SpreadsheetWriter::Free::operator()(lxw_workbook *workbook) const
{
    lxw_workbook_free(workbook);
}

SpreadsheetWriter::SpreadsheetWriter(const QString &path)
{
    lxw_workbook_options options = {};
    options.constant_memory = LXW_TRUE;
    m_workbook.reset(workbook_new_opt(path.toUtf8().constData(), &options));
    m_sheet = m_workbook ? workbook_add_worksheet(m_workbook.get(), nullptr) : nullptr;
    if (m_sheet == nullptr) {
        throw core::Error(0, u"no worksheet can be made: "_s + path);
    }
}

SpreadsheetWriter::~SpreadsheetWriter() = default;

void SpreadsheetWriter::writeHeadings(const QStringList &headings)
{
    constexpr int columnD = 3;
    constexpr double width = 20;
    lxw_format *text = workbook_add_format(m_workbook.get());
    format_set_num_format(text, "@");
    lxw_format *bold = workbook_add_format(m_workbook.get());
    format_set_bold(bold);
    m_columns = static_cast<quint16>(headings.size());
    const auto widen = [&](int first, int last, lxw_format *format) {
        if (first <= last) { // the ranges must not overlap: programs take such a file for a damaged one
            check(worksheet_set_column(m_sheet, lxw_col_t(first), lxw_col_t(last), width, format));
        }
    };
    widen(0, std::min(m_columns - 1, columnD - 1), nullptr);
    widen(columnD, columnD, text);
    widen(columnD + 1, m_columns - 1, nullptr);
    worksheet_freeze_panes(m_sheet, 1, 0);
    for (quint16 column = 0; column < m_columns; ++column) {
        check(worksheet_write_string(m_sheet, 0, column, cellText(headings.at(column).toUtf8()).constData(),
                                     bold));
    }
}

void SpreadsheetWriter::writeCell(int column, QByteArrayView utf8)
{
    const auto place = static_cast<lxw_col_t>(column);
    if (isPlain(utf8)) {
        m_text.assign(utf8.data(), static_cast<size_t>(utf8.size()));
    } else {
        m_text = cellText(utf8).toStdString();
    }
    check(worksheet_write_string(m_sheet, m_row, place, m_text.c_str(), nullptr));
}

// Asked beforehand, because the library does not check whether its temporary files were written whole.
void SpreadsheetWriter::requireSpace() const
{
    std::FILE *rows = m_sheet->optimize_tmpfile;
    if (rows != nullptr && (std::fflush(rows) != 0 || std::ferror(rows) != 0)) {
        throw core::Error(0, u"the rows could not be kept in the temporary folder"_s);
    }
    const qint64 needed = rows != nullptr ? std::ftell(rows) : 0;
    if (QStorageInfo(QDir::tempPath()).bytesAvailable() < needed) {
        throw core::Error(0, u"too little space in the temporary folder"_s);
    }
}

void SpreadsheetWriter::close()
{
    requireSpace();
    if (m_columns > 0) {
        const auto last = static_cast<lxw_col_t>(m_columns - 1);
        check(worksheet_autofilter(m_sheet, 0, 0, m_row, last));
    }
    worksheet_ignore_errors(m_sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, "A1:XFD1048576");
    check(workbook_close(m_workbook.release()));
}

} // namespace customers
