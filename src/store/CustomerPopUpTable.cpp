#include "store/CustomerPopUpTable.h"

namespace store {

void CustomerPopUpTable::append(qint32 sn, QByteArrayView t3)
{
    if (!m_textOf.contains(sn)) {
        m_textOf.insert(sn, numberOf(t3));
    }
}

void CustomerPopUpTable::replace(qint32 sn, QByteArrayView t3)
{
    m_textOf.insert(sn, numberOf(t3));
}

qint32 CustomerPopUpTable::numberOf(QByteArrayView t3)
{
    if (m_lastNumber < m_texts.size() && m_texts.at(m_lastNumber) == t3) {
        return m_lastNumber; // as most rows say the same, most need no look-up
    }
    const QByteArray text = t3.toByteArray();
    const auto known = m_numberOf.constFind(text);
    if (known != m_numberOf.cend()) {
        return m_lastNumber = *known;
    }
    m_lastNumber = static_cast<qint32>(m_texts.size());
    m_texts.append(text);
    m_numberOf.insert(text, m_lastNumber);
    return m_lastNumber;
}

std::optional<QString> CustomerPopUpTable::T3(qint32 sn) const
{
    const auto found = m_textOf.constFind(sn);
    return found != m_textOf.cend() ? std::optional(QString::fromUtf8(m_texts.at(*found))) : std::nullopt;
}

} // namespace store
