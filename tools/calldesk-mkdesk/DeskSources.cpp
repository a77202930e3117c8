#include "DeskSources.h"

#include "core/Error.h"
#include "language/Languages.h"
#include "language/ShownTexts.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace mkdesk {

DeskSources::DeskSources(const QString &folder) : m_folder(folder)
{
    if (!m_folder.exists(u"schema/Customer.sql"_s)) {
        throw core::Error(0, folder + u" does not hold the sources of a desk"_s);
    }
}

QString DeskSources::embedded()
{
    return QFileInfo(language::builtInTextsFolder()).path();
}

QString DeskSources::text(const QString &path) const
{
    QFile file(m_folder.filePath(path));
    if (!file.open(QIODevice::ReadOnly)) {
        throw core::Error(file.error(), file.fileName() + u": "_s + file.errorString());
    }
    return QString::fromUtf8(file.readAll());
}

core::TsvTable DeskSources::table(const QString &path) const
{
    return core::parseTsv(text(path), path);
}

core::TsvTable DeskSources::areas(const QString &code) const
{
    const QString folder = u"lang/"_s + code;
    core::TsvTable all{{u"id"_s, u"text"_s}, {}};
    for (const QString &file :
         QDir(m_folder.filePath(folder)).entryList({u"*.tsv"_s}, QDir::Files, QDir::Name)) {
        const QString path = folder + u'/' + file;
        const core::TsvTable part = table(path);
        if (part.columns != all.columns) {
            throw core::Error(0, path + u": the columns must be "_s + all.columns.join(u", "_s));
        }
        all.rows += part.rows;
    }
    return all;
}

QHash<QString, QString> DeskSources::textsById(const QString &code) const
{
    QHash<QString, QString> texts;
    for (const QStringList &row : areas(code).rows) {
        texts.insert(row.at(0).toUpper(), row.at(1));
    }
    return texts;
}

core::TsvTable DeskSources::languageTexts() const
{
    const QHash<QString, QString> simplified = textsById(u"CHS"_s);
    const QHash<QString, QString> traditional = textsById(u"CHT"_s);
    core::TsvTable texts{{u"id"_s, u"ENG"_s, u"CHS"_s, u"CHT"_s}, {}};
    for (const QStringList &row : areas(u"ENG"_s).rows) {
        const QString key = row.at(0).toUpper();
        texts.rows.append({row.at(0), row.at(1), simplified.value(key), traditional.value(key)});
    }
    return texts;
}

core::TsvTable DeskSources::languageFile(const QString &code) const
{
    const QHash<QString, QString> english = textsById(u"ENG"_s);
    core::TsvTable file{{u"item"_s, u"userlanguage"_s, u"english"_s}, {}};
    for (const QStringList &row : areas(code).rows) {
        if (!row.at(1).isEmpty()) {
            file.rows.append({row.at(0), row.at(1), english.value(row.at(0).toUpper())});
        }
    }
    return file;
}

QStringList DeskSources::folders(const QString &path) const
{
    return QDir(m_folder.filePath(path)).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QStringList DeskSources::languageCodes() const
{
    QStringList codes = folders(u"lang"_s);
    codes.removeIf([](const QString &code) {
        const language::Language *language = language::languageOf(code);
        return !language || !language->textColumn.isEmpty(); // else "Lang.mdb" holds its texts
    });
    return codes;
}

QStringList DeskSources::helpLanguages() const
{
    return folders(u"help"_s);
}

QStringList DeskSources::helpIds(const QString &code) const
{
    QStringList ids;
    const QDir folder(m_folder.filePath(u"help/"_s + code));
    for (const QString &file : folder.entryList({u"*.txt"_s}, QDir::Files, QDir::Name)) {
        ids.append(QFileInfo(file).completeBaseName());
    }
    return ids;
}

} // namespace mkdesk
