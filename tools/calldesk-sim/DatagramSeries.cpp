#include "DatagramSeries.h"

namespace sim {

qint64 Pace::dueNanoseconds(qint64 index) const
{
    constexpr double nanosecondsASecond = 1e9;
    const qint64 startOfBurst = index / burst * burst;
    return rate > 0 ? static_cast<qint64>(static_cast<double>(startOfBurst) / rate * nanosecondsASecond) : 0;
}

NumberedSeries::NumberedSeries(DatagramTemplate wanted, QString say, qint64 count, qint64 first, Pace pace)
    : m_wanted(std::move(wanted)), m_say(std::move(say)), m_count(count), m_first(first), m_pace(pace)
{}

QByteArray NumberedSeries::datagram(qint64 index, const QDateTime &now) const
{
    return makeDatagram(m_wanted, m_first + index, now);
}

RecordedSeries::RecordedSeries(QList<QByteArray> datagrams, Pace pace)
    : m_datagrams(std::move(datagrams)), m_pace(pace)
{}

QByteArray SceneSeries::datagram(qint64 index, const QDateTime &now) const
{
    return makeDatagram(step(index).datagram, index + 1, now);
}

} // namespace sim
