#pragma once

#include <QProcess>
#include <QString>

namespace bench {

/// A process of its own, which tells what it measures line by line as "name value". It is killed with this
/// object.
class Child
{
public:
    /// `program` stands beside this one.
    Child(const QString &program, const QStringList &arguments);
    ~Child();
    Q_DISABLE_COPY_MOVE(Child)

    /// Waits for the line with that name; its value, 0 where it has none. Throws std::runtime_error when the
    /// process ends or is silent for a minute.
    double value(QLatin1StringView name);
    /// True when the process ends within that time; throws when it failed.
    bool ends(int withinMs);
    qint64 id() const { return m_process.processId(); }

private:
    QProcess m_process;
};

} // namespace bench
