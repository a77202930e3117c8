#include "imports/DelimitedRows.h"

#include <QBuffer>
#include <QHash>

#include <algorithm>

namespace imports {

namespace {

constexpr qsizetype mostRowBytes = 1 << 20;
constexpr QByteArrayView separatorLine("sep="); // in front of the rows, from some spreadsheets

} // namespace

bool isBlank(const QStringList &cells)
{
    return std::ranges::all_of(cells, [](const QString &cell) { return cell.trimmed().isEmpty(); });
}

// One parting decides for all: the same number of cells in as many rows as possible, and as many as possible.
char separatorOf(std::unique_ptr<ForeignText> text)
{
    constexpr int looksAt = 50;
    QByteArray sample;
    for (QByteArray piece = text->read(); !piece.isEmpty() && sample.size() < mostRowBytes / 4;
         piece = text->read()) {
        sample += piece;
    }
    if (sample.startsWith(separatorLine) && sample.size() > separatorLine.size()) {
        return sample.at(separatorLine.size());
    }
    char best = ',';
    std::pair<qsizetype, qsizetype> bestScore;
    for (const char separator : separators) {
        auto device = std::make_unique<QBuffer>();
        device->setData(sample);
        device->open(QIODevice::ReadOnly);
        DelimitedRows rows(std::make_unique<ForeignText>(std::move(device), 1252), separator);
        QHash<qsizetype, qsizetype> rowsOfWidth;
        for (int seen = 0; seen < looksAt; ++seen) {
            const std::optional<SourceRow> row = rows.next();
            if (!row) {
                break;
            }
            ++rowsOfWidth[row->cells.size()];
        }
        for (auto width = rowsOfWidth.cbegin(); width != rowsOfWidth.cend(); ++width) {
            const std::pair score(width.value(), width.key());
            if (width.key() > 1 && score > bestScore) {
                bestScore = score;
                best = separator;
            }
        }
    }
    return best;
}

std::optional<SourceRow> DelimitedRows::next()
{
    for (;;) {
        std::optional<SourceRow> row = takeRow();
        if (!row) {
            return {};
        }
        row->number = ++m_number;
        if (m_number == 1 && row->cells.value(0) == QLatin1StringView(separatorLine)) {
            continue;
        }
        if (row->trouble != RowTrouble::None || !isBlank(row->cells)) {
            return row;
        }
    }
}

std::optional<SourceRow> DelimitedRows::takeRow()
{
    for (;;) {
        const QByteArrayView rest = QByteArrayView(m_buffer).sliced(m_at);
        if (rest.isEmpty() && m_atEnd) {
            return {};
        }
        if (const std::optional<Parsed> parsed = rest.isEmpty() ? std::nullopt : parse(rest)) {
            m_at += parsed->used;
            return decoded(parsed->cells);
        }
        if (m_atEnd || rest.size() > mostRowBytes) {
            return skipUnclosed();
        }
        fill();
    }
}

void DelimitedRows::fill()
{
    m_buffer.remove(0, m_at);
    m_at = 0;
    const QByteArray piece = m_text->read();
    m_atEnd = piece.isEmpty();
    m_buffer += piece;
}

// Nothing where the row does not end in what has been read.
std::optional<DelimitedRows::Parsed> DelimitedRows::parse(QByteArrayView text) const
{
    Parsed row;
    QByteArray cell;
    bool quoted = false;
    bool begins = true;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char byte = text[i];
        const bool isLast = i + 1 == text.size();
        if (!isLast && m_text->isFirstHalf(byte)) {
            cell.append(byte).append(text[++i]);
            begins = false;
        } else if (quoted && byte == '"') {
            if (isLast && !m_atEnd) {
                return {};
            }
            quoted = !isLast && text[i + 1] == '"';
            if (quoted) {
                cell.append(text[++i]);
            }
        } else if (quoted) {
            cell.append(byte);
        } else if (byte == '"' && begins) {
            quoted = true;
            begins = false;
        } else if (byte == m_separator) {
            row.cells.append(std::exchange(cell, {}));
            begins = true;
        } else if (byte == '\n' || byte == '\r') {
            if (byte == '\r' && isLast && !m_atEnd) {
                return {};
            }
            row.cells.append(cell);
            row.used = i + (byte == '\r' && !isLast && text[i + 1] == '\n' ? 2 : 1);
            return row;
        } else {
            cell.append(byte);
            begins = false;
        }
    }
    if (!m_atEnd || quoted) {
        return {};
    }
    row.cells.append(cell);
    row.used = text.size();
    return row;
}

SourceRow DelimitedRows::decoded(const QByteArrayList &cells) const
{
    SourceRow row;
    row.trouble = cells.size() > mostColumns ? RowTrouble::Columns : RowTrouble::None;
    for (const QByteArray &cell : cells.first(std::min(cells.size(), mostColumns))) {
        const std::optional<QString> text = m_text->decode(cell);
        if (!text) {
            row.trouble = RowTrouble::Characters;
        } else if (text->size() > mostCellCharacters) {
            row.trouble = RowTrouble::Unclosed;
        }
        row.cells.append(text.value_or(QString()).left(mostCellCharacters));
    }
    return row;
}

SourceRow DelimitedRows::skipUnclosed()
{
    const qsizetype lineBreak = m_buffer.indexOf('\n', m_at);
    m_at = lineBreak < 0 ? m_buffer.size() : lineBreak + 1;
    return {.trouble = RowTrouble::Unclosed};
}

} // namespace imports
