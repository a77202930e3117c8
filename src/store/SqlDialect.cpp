#include "store/SqlDialect.h"

#include "store/SqliteEmitter.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

namespace {

/// The words that make a select more than the rows of one table.
bool needsWholeResult(const SqlToken &token)
{
    static constexpr QLatin1StringView words[] = {"distinct"_L1, "group"_L1, "union"_L1, "join"_L1,
                                                  "limit"_L1,    "as"_L1,    "select"_L1};
    return std::ranges::any_of(words, [&](QLatin1StringView word) { return token.is(word); });
}

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

std::optional<TableSelect> asTableSelect(QStringView sql)
{
    std::vector<SqlToken> tokens = tokenize(sql);
    if (!tokens.empty() && tokens.back().isSymbol(u';')) {
        tokens.pop_back();
    }
    const auto from = std::ranges::find_if(tokens, [](const SqlToken &token) { return token.is("from"_L1); });
    if (from - tokens.begin() < 2 || tokens.end() - from < 2 || !tokens.front().is("select"_L1)) {
        return {};
    }
    const auto tail = from + 2;
    const bool listComputes =
        std::any_of(tokens.begin(), from, [](auto &token) { return token.isSymbol(u'('); });
    const bool tailFits = tail == tokens.end() || tail->is("where"_L1) || tail->is("order"_L1);
    if (listComputes || !tailFits || std::any_of(tokens.begin() + 1, tokens.end(), needsWholeResult)) {
        return {};
    }
    const bool ordered = std::any_of(tail, tokens.end(), [](auto &token) { return token.is("order"_L1); });
    return TableSelect{from[1].name().toString(), sourceText(tokens[1], from[-1]),
                       tail == tokens.end() ? QString() : sourceText(*tail, tokens.back()), ordered};
}

QString TableSelect::inOrder(const QString &columnList) const
{
    const QString select = u"select "_s + columnList + u" from ["_s + table + u"] "_s + tail;
    return ordered ? select : select + u" order by rowid"_s;
}

} // namespace store
