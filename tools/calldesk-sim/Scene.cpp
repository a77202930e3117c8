#include "Scene.h"

#include "Options.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace sim {

namespace {

// "12.5" from the start, or "+3" after the step before.
qint64 timeOf(QStringView text, qint64 before)
{
    constexpr double nanosecondsASecond = 1e9;
    const bool relative = text.startsWith(u'+');
    bool isNumber = false;
    const double seconds = (relative ? text.sliced(1) : text).toDouble(&isNumber);
    if (!isNumber || !(seconds >= 0 && seconds <= 86400)) {
        throw UsageError(u"\"%1\" is no time in seconds"_s.arg(text));
    }
    const qint64 at = static_cast<qint64>(seconds * nanosecondsASecond) + (relative ? before : 0);
    if (at < before) {
        throw UsageError(u"the time goes back"_s);
    }
    return at;
}

SceneStep parseLine(QStringView line, qint64 before, const CodePageChoice &codePage)
{
    QStringList words = QProcess::splitCommand(line);
    const qint64 at = timeOf(words.takeFirst(), before);
    const Options options = parseStep(words, codePage);
    return {at, options.say, options.datagram};
}

} // namespace

std::vector<SceneStep> parseScene(const QString &text, const CodePageChoice &codePage)
{
    std::vector<SceneStep> steps;
    qsizetype number = 0;
    for (const QStringView rawLine : QStringView(text).split(u'\n')) {
        ++number;
        const QStringView line = rawLine.trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) {
            continue;
        }
        try {
            steps.push_back(parseLine(line, steps.empty() ? 0 : steps.back().atNanoseconds, codePage));
        } catch (const UsageError &error) {
            throw UsageError(u"line %1: %2"_s.arg(number).arg(QString::fromUtf8(error.what())));
        }
    }
    return steps;
}

} // namespace sim
