#include "core/TextFiles.h"

#include "core/platform.h"

#include <QFile>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace core {

bool SaveTextFile(RunLog &log, const QString &path, const QString &text)
{
    return log.trap("SaveTextFile"_L1,
                    [&] { platform::appendToFile(path, QString(text + u"\r\n"_s).toUtf8()); });
}

QString ReadTextFile(RunLog &log, const QString &path, qint64 atMost)
{
    return log.trap("ReadTextFile"_L1, QString(), [&] {
        QString lines;
        QFile file(path);
        if (!file.exists()) {
            return lines;
        }
        if (!file.open(QIODevice::ReadOnly)) {
            throw Error(0, file.errorString() + u": "_s + path);
        }
        if (file.size() > atMost) {
            file.seek(file.size() - atMost);
            file.readLine(); // most likely the rest of one
        }
        QTextStream stream(&file);
        for (QString text; stream.readLineInto(&text);) {
            lines += text + u"\r\n"_s;
        }
        if (file.error() != QFileDevice::NoError) {
            throw Error(0, file.errorString() + u": "_s + path);
        }
        return lines;
    });
}

} // namespace core
