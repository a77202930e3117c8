#include "store/SqlDialect.h"

#include "store/SqliteEmitter.h"

using namespace Qt::StringLiterals;

namespace store {

namespace {

/// What stands between the two tokens in the statement that both are cut from, themselves included.
QString sourceText(const SqlToken &first, const SqlToken &last)
{
    return QStringView(first.text.begin(), last.text.end()).toString();
}

} // namespace

QString toSqlite(QStringView sql, Wildcards wildcards)
{
    return SqliteEmitter(tokenize(sql), wildcards).emitted();
}

QString quoted(const QString &value)
{
    return QString(value).replace(u"'"_s, u"''"_s);
}

QStringList statementsOf(QStringView schemaSql)
{
    const std::vector<SqlToken> tokens = tokenize(schemaSql);
    QStringList statements;
    size_t first = 0;
    for (size_t i = 0; i < tokens.size(); ++i) {
        const bool end = tokens[i].isSymbol(u';');
        if (end && i > first) {
            statements.append(sourceText(tokens[first], tokens[i - 1]));
        } else if (!end && i + 1 == tokens.size()) {
            statements.append(sourceText(tokens[first], tokens[i]));
        }
        first = end ? i + 1 : first;
    }
    return statements;
}

} // namespace store
