#include "language/ShownTexts.h"

#include "core/TsvTable.h"
#include "language/LanguagePack.h"

#include <QDir>

using namespace Qt::StringLiterals;

// The resources of a static library have to be registered, and Q_INIT_RESOURCE does not work inside a
// namespace.
static void registerTexts()
{
    Q_INIT_RESOURCE(texts);
}

namespace language {

namespace {

QHash<QString, QString> readBuiltIn(const QString &code)
{
    QHash<QString, QString> texts;
    const QDir folder(builtInTextsFolder() + u'/' + code);
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

QString builtInTextsFolder()
{
    registerTexts();
    return u":/data/lang"_s;
}

QString builtInText(const QString &key)
{
    static const QHash<QString, QString> texts = readBuiltIn(u"ENG"_s);
    return texts.value(key.toUpper());
}

BuiltInTexts::BuiltInTexts(const QString &code) : m_texts(readBuiltIn(code)) {}

QString BuiltInTexts::Lms(const QString &key) const
{
    const QString text = m_texts.value(key.toUpper());
    return text.isEmpty() ? builtInText(key) : text;
}

QString ShownTexts::Lms(const QString &key) const
{
    if (key.isEmpty()) { // most controls have none, and the built-in texts are only read where one is missing
        return {};
    }
    QString text = m_pack.Lms(key);
    if (text.isEmpty()) {
        text = m_pack.systemText(key);
    }
    return text.isEmpty() ? builtInText(key) : text;
}

} // namespace language
