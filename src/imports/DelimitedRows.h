#pragma once

#include "imports/ForeignText.h"
#include "imports/RowSource.h"

namespace imports {

/// The signs that may stand between cells, the most telling first.
inline constexpr QByteArrayView separators("\t;,|");

/// The one that parts the first rows most evenly; a comma where none does. The text is read on.
char separatorOf(std::unique_ptr<ForeignText> text);

/// The rows of a delimited text. A cell in quotation marks may hold separators, line breaks and doubled
/// marks. A row whose quotation mark is never closed ends at its first line break, and the next one is read
/// from there.
class DelimitedRows : public RowSource
{
public:
    DelimitedRows(std::unique_ptr<ForeignText> text, char separator)
        : m_text(std::move(text)), m_separator(separator)
    {}

    std::optional<SourceRow> next() override;
    int perMille() const override { return m_text->perMille(); }

private:
    struct Parsed
    {
        QByteArrayList cells;
        qsizetype used = 0;
    };
    std::optional<Parsed> parse(QByteArrayView text) const;
    std::optional<SourceRow> takeRow();
    SourceRow decoded(const QByteArrayList &cells) const;
    SourceRow skipUnclosed();
    void fill();

    std::unique_ptr<ForeignText> m_text;
    char m_separator;
    QByteArray m_buffer;
    qsizetype m_at = 0;
    bool m_atEnd = false;
    qint64 m_number = 0;
};

/// Whether a row holds anything but blanks.
bool isBlank(const QStringList &cells);

} // namespace imports
