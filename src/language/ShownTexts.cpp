#include "language/ShownTexts.h"

#include "core/TsvTable.h"
#include "language/LanguagePack.h"

#include <QDir>

using namespace Qt::StringLiterals;

// A static library's resource is not there before this, which cannot stand in a namespace.
static void registerTexts()
{
    Q_INIT_RESOURCE(english);
}

namespace language {

namespace {

QHash<QString, QString> readBuiltIn()
{
    registerTexts();
    QHash<QString, QString> texts;
    const QDir folder(u":/english/lang/ENG"_s);
    for (const QString &name : folder.entryList()) {
        QFile file(folder.filePath(name));
        file.open(QIODevice::ReadOnly);
        for (const QStringList &row : core::parseTsv(QString::fromUtf8(file.readAll()), name).rows) {
            texts.insert(row.at(0).toUpper(), row.at(1));
        }
    }
    return texts;
}

} // namespace

QString builtInText(const QString &key)
{
    static const QHash<QString, QString> texts = readBuiltIn();
    return texts.value(key.toUpper());
}

QString ShownTexts::Lms(const QString &key) const
{
    QString text = m_pack.Lms(key);
    if (text.isEmpty()) {
        text = m_pack.systemText(key);
    }
    return text.isEmpty() ? builtInText(key) : text;
}

} // namespace language
