#include "core/TsvTable.h"

#include "core/Error.h"

using namespace Qt::StringLiterals;

namespace core {

namespace {

QString unescaped(QStringView field)
{
    QString text;
    text.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        const bool escape = field.at(i) == u'\\' && i + 1 < field.size();
        const QChar next = escape ? field.at(i + 1) : QChar();
        if (next == u'n' || next == u'\\') {
            text += next == u'n' ? QChar(u'\n') : next;
            ++i;
        } else {
            text += field.at(i);
        }
    }
    return text;
}

QStringList fieldsOf(QStringView line)
{
    QStringList fields;
    for (const QStringView field : line.split(u'\t')) {
        fields.append(unescaped(field));
    }
    return fields;
}

} // namespace

QString TsvTable::field(const QStringList &row, const QString &column) const
{
    const qsizetype index = columns.indexOf(column);
    if (index < 0) {
        throw Error(0, u"there is no column "_s + column);
    }
    return row.at(index);
}

TsvTable parseTsv(const QString &text, const QString &name)
{
    TsvTable table;
    qsizetype number = 0;
    qsizetype optional = 0; // columns that a line may lack
    for (QStringView line : QStringView(text).split(u'\n')) {
        ++number;
        line = line.endsWith(u'\r') ? line.chopped(1) : line;
        if (line.isEmpty()) {
            continue;
        }
        QStringList fields = fieldsOf(line);
        if (table.columns.isEmpty()) {
            optional = fields.last().startsWith(u'[') ? 1 : 0;
            table.columns = fields.first(fields.size() - optional);
            continue;
        }
        if (fields.size() == table.columns.size() + optional) {
            fields.resize(table.columns.size());
        }
        if (fields.size() == table.columns.size()) {
            table.rows.append(fields);
        } else {
            throw Error(0, u"%1, line %2: %3 fields instead of %4"_s.arg(
                               name, QString::number(number), QString::number(fields.size()),
                               QString::number(table.columns.size())));
        }
    }
    return table;
}

} // namespace core
