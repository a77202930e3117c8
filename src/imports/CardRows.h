#pragma once

#include "imports/ForeignText.h"
#include "imports/RowSource.h"

namespace imports {

/// The cards of a vCard file (2.1, 3.0 and 4.0), a row each. The first row names the columns by the text keys
/// of what they hold.
class CardRows : public RowSource
{
public:
    explicit CardRows(std::unique_ptr<ForeignText> text) : m_text(std::move(text)) {}

    std::optional<SourceRow> next() override;
    int perMille() const override { return m_text->perMille(); }

private:
    struct Card;
    std::optional<QByteArray> line();
    std::optional<QByteArray> property();
    void add(Card &card, const QByteArray &property) const;
    std::optional<QString> decode(const QByteArray &bytes, const QByteArray &charset) const;

    std::unique_ptr<ForeignText> m_text;
    QByteArray m_buffer;
    qsizetype m_at = 0;
    bool m_atEnd = false;
    std::optional<QByteArray> m_ahead; ///< a line that was read, but not used
    qint64 m_number = 0;
    bool m_namedColumns = false;
};

} // namespace imports
