#include "store/CustomerPopUpTable.h"

namespace store {

void CustomerPopUpTable::append(qint32 sn, const QString &t3)
{
    if (!m_textOf.contains(sn)) {
        m_textOf.insert(sn, numberOf(t3));
    }
}

qint32 CustomerPopUpTable::numberOf(const QString &t3)
{
    if (m_lastNumber < m_texts.size() && m_texts.at(m_lastNumber) == t3) {
        return m_lastNumber; // as most rows say the same, most need no look-up
    }
    const auto known = m_numberOf.constFind(t3);
    if (known != m_numberOf.cend()) {
        return m_lastNumber = *known;
    }
    m_lastNumber = static_cast<qint32>(m_texts.size());
    m_texts.append(t3);
    m_numberOf.insert(t3, m_lastNumber);
    return m_lastNumber;
}

std::optional<QString> CustomerPopUpTable::T3(qint32 sn) const
{
    const auto found = m_textOf.constFind(sn);
    return found != m_textOf.cend() ? std::optional(m_texts.at(*found)) : std::nullopt;
}

} // namespace store
