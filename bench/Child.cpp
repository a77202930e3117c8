#include "Child.h"

#include <QCoreApplication>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int patienceMs = 60'000;

// The same everywhere: no display, no language of the user's, no files of the user's.
QProcessEnvironment plainEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    environment.insert(u"QT_LOGGING_RULES"_s, u"*.warning=false"_s);
    return environment;
}

} // namespace

Child::Child(const QString &program, const QStringList &arguments)
{
    m_process.setProcessEnvironment(plainEnvironment());
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QCoreApplication::applicationDirPath() + u'/' + program, arguments);
}

Child::~Child()
{
    m_process.kill();
    m_process.waitForFinished();
}

double Child::value(QLatin1StringView name)
{
    for (;;) {
        while (m_process.canReadLine()) {
            const QString line = QString::fromLatin1(m_process.readLine()).trimmed();
            if (line.section(u' ', 0, 0) == name) {
                return line.section(u' ', 1).toDouble();
            }
        }
        if (!m_process.waitForReadyRead(patienceMs)) {
            throw std::runtime_error("a process of the benchmark does not answer: " +
                                     m_process.arguments().join(u' ').toStdString());
        }
    }
}

bool Child::ends(int withinMs)
{
    if (!m_process.waitForFinished(withinMs)) {
        return false;
    }
    if (m_process.exitStatus() != QProcess::NormalExit || m_process.exitCode() != 0) {
        throw std::runtime_error("failed: " + m_process.arguments().join(u' ').toStdString());
    }
    return true;
}

} // namespace bench
