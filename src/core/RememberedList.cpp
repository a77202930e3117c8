#include "core/RememberedList.h"

#include "core/AtomicFile.h"
#include "core/Error.h"
#include "core/platform.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace core {

namespace {

constexpr qint64 saneSize = 1 << 20; // a list to pick from by hand

void checkName(const QString &name)
{
    static const QRegularExpression plain(u"^[A-Za-z0-9]{1,50}$"_s);
    if (!plain.match(name).hasMatch()) {
        throw Error(0, u"no name of a list: "_s + name);
    }
}

} // namespace

RememberedList::RememberedList(const Paths &paths, const QString &combo, const QString &language)
    : m_path(paths.PopUserDataFolder + QDir::separator() + combo + u'_' + language + u".txt"_s)
{
    checkName(combo);
    checkName(language);
}

QStringList RememberedList::items() const
{
    if (!QFile::exists(m_path)) {
        return {};
    }
    QStringList lines = QString::fromUtf8(readBytes(m_path, 0, saneSize)).split(u'\n');
    for (QString &line : lines) {
        line.remove(u'\r');
    }
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

void RememberedList::append(const QString &item) const
{
    if (item.contains(u'\n') || item.contains(u'\r')) {
        throw Error(0, u"an item of several lines"_s);
    }
    platform::appendToFile(m_path, QString(item + u"\r\n"_s).toUtf8());
}

} // namespace core
