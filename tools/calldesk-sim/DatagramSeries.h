#pragma once

#include "Scene.h"

#include <QList>

namespace sim {

/// When the datagrams of an even series are due: `rate` a second in the mean, `burst` of them at once.
struct Pace
{
    double rate = 0; ///< 0: all at once
    qint64 burst = 1;

    qint64 dueNanoseconds(qint64 index) const;
};

/// What is sent and when. Indexes run from 0.
class DatagramSeries
{
public:
    virtual ~DatagramSeries() = default;
    virtual qint64 count() const = 0;
    /// Nanoseconds after the start; never less than that of the index before.
    virtual qint64 due(qint64 index) const = 0;
    virtual QByteArray datagram(qint64 index, const QDateTime &now) const = 0;
    /// A line for the operator, shown when the datagram is sent; usually empty.
    virtual QString say(qint64 index) const = 0;
};

/// One template over and over, with its running number.
class NumberedSeries : public DatagramSeries
{
public:
    NumberedSeries(DatagramTemplate wanted, QString say, qint64 count, qint64 first, Pace pace);
    qint64 count() const override { return m_count; }
    qint64 due(qint64 index) const override { return m_pace.dueNanoseconds(index); }
    QByteArray datagram(qint64 index, const QDateTime &now) const override;
    QString say(qint64) const override { return m_say; }

private:
    DatagramTemplate m_wanted;
    QString m_say;
    qint64 m_count;
    qint64 m_first;
    Pace m_pace;
};

/// Datagrams that were recorded.
class RecordedSeries : public DatagramSeries
{
public:
    RecordedSeries(QList<QByteArray> datagrams, Pace pace);
    qint64 count() const override { return m_datagrams.size(); }
    qint64 due(qint64 index) const override { return m_pace.dueNanoseconds(index); }
    QByteArray datagram(qint64 index, const QDateTime &) const override { return m_datagrams.at(index); }
    QString say(qint64) const override { return QString(); }

private:
    QList<QByteArray> m_datagrams;
    Pace m_pace;
};

/// The steps of a scene, each at its own time.
class SceneSeries : public DatagramSeries
{
public:
    explicit SceneSeries(std::vector<SceneStep> steps) : m_steps(std::move(steps)) {}
    qint64 count() const override { return static_cast<qint64>(m_steps.size()); }
    qint64 due(qint64 index) const override { return step(index).atNanoseconds; }
    QByteArray datagram(qint64 index, const QDateTime &now) const override;
    QString say(qint64 index) const override { return step(index).say; }

private:
    const SceneStep &step(qint64 index) const { return m_steps.at(static_cast<size_t>(index)); }

    std::vector<SceneStep> m_steps;
};

} // namespace sim
