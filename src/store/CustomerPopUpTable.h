#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace store {

/// The customer pop-up table in memory: one row per customer, of which only the answers that calls ask for
/// are kept, a few bytes a customer.
class CustomerPopUpTable
{
public:
    /// Adds a row behind the others; the flag text in UTF-8.
    void append(qint32 sn, QByteArrayView t3);
    /// Gives the row with that SN another flag text; a new row stands behind the others.
    void replace(qint32 sn, QByteArrayView t3);
    void remove(qint32 sn) { m_textOf.remove(sn); }

    /// The pop-up flag text of the first row with this SN, "" where the database held Null; nothing without a
    /// row.
    std::optional<QString> T3(qint32 sn) const;
    qsizetype rowCount() const { return m_textOf.size(); }

private:
    qint32 numberOf(QByteArrayView t3);

    QHash<qint32, qint32> m_textOf; ///< SN -> place in m_texts
    QList<QByteArray> m_texts;      ///< the different flag texts in UTF-8, usually "0" and "1"
    QHash<QByteArray, qint32> m_numberOf;
    qint32 m_lastNumber = 0;
};

} // namespace store
