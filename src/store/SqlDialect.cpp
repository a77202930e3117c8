#include "store/SqlDialect.h"

#include "core/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr auto autoNumber = "INTEGER PRIMARY KEY AUTOINCREMENT"_L1;

/// What a column type of the given words is here. "Memo" as it stands would have numeric affinity: '00123'
/// would be kept as 123.
QLatin1StringView sqliteType(const SqlToken &type)
{
    struct Type
    {
        QLatin1StringView given;
        QLatin1StringView sqlite;
    };
    static constexpr Type types[] = {
        {"memo"_L1, "TEXT"_L1},     {"text"_L1, "TEXT COLLATE JET"_L1}, {"bit"_L1, "BOOLEAN"_L1},
        {"yesno"_L1, "BOOLEAN"_L1}, {"long"_L1, "INTEGER"_L1},          {"integer"_L1, "INTEGER"_L1},
        {"double"_L1, "REAL"_L1},   {"counter"_L1, autoNumber},         {"autoincrement"_L1, autoNumber},
    };
    const auto *found = std::ranges::find_if(types, [&](const Type &each) { return type.is(each.given); });
    return found != std::end(types) ? found->sqlite : QLatin1StringView();
}

bool isSymbol(const SqlToken &token, char16_t symbol)
{
    return token.kind == SqlToken::Kind::Symbol && token.text == QChar(symbol);
}

/// The text in single quotes: SQLite would first take a double-quoted one for a name.
QString singleQuoted(QStringView text)
{
    QString inner = text.sliced(1).chopped(1).toString();
    inner.replace(u"\"\""_s, u"\""_s);
    inner.replace(u"'"_s, u"''"_s);
    return u'\'' + inner + u'\'';
}

/// Writes the tokens of one statement in SQLite's words.
class SqliteEmitter
{
public:
    SqliteEmitter(std::vector<SqlToken> tokens, Wildcards wildcards)
        : m_tokens(std::move(tokens)), m_wildcards(wildcards)
    {}
    QString emitted()
    {
        dropSemicolon();
        const bool create = at(0, "create"_L1);
        const size_t indexAt = at(1, "unique"_L1) ? 2 : 1;
        if (create && at(1, "table"_L1)) {
            emitCreateTable();
        } else if (create && at(indexAt, "index"_L1) && at(indexAt + 2, "on"_L1)) {
            emitCreateIndex(indexAt + 1);
        } else {
            emitUpTo(m_tokens.size());
        }
        return m_sql;
    }

private:
    bool at(size_t position, QLatin1StringView word) const
    {
        return position < m_tokens.size() && m_tokens[position].is(word);
    }
    bool symbolAt(size_t position, char16_t symbol) const
    {
        return position < m_tokens.size() && isSymbol(m_tokens[position], symbol);
    }
    void dropSemicolon();
    void emitUpTo(size_t end);
    void emitToken(const SqlToken &token);
    void closeNullTest(const SqlToken &token);
    void emitCreateTable();
    void emitColumn(size_t end);
    void emitCreateIndex(size_t nameAt);
    size_t columnEnd() const;
    void append(QStringView text, bool blankBefore);

    std::vector<SqlToken> m_tokens;
    Wildcards m_wildcards;
    size_t m_next = 0;
    int m_depth = 0;              ///< of the open brackets
    std::vector<int> m_nullTests; ///< the depths of the open "isnull("
    QString m_sql;
};

void SqliteEmitter::dropSemicolon()
{
    if (!m_tokens.empty() && isSymbol(m_tokens.back(), u';')) {
        m_tokens.pop_back();
    }
    if (std::ranges::any_of(m_tokens, [](const SqlToken &token) { return isSymbol(token, u';'); })) {
        throw core::Error(1, u"characters found after the end of the statement"_s);
    }
}

/// Two symbols that were written apart, or would begin a comment together, never meet: the given words know
/// no comments, and a value typed by the operator must not cut a statement short.
void SqliteEmitter::append(QStringView text, bool blankBefore)
{
    const bool comment = (m_sql.endsWith(u'-') && text == u'-') || (m_sql.endsWith(u'/') && text == u'*');
    if ((blankBefore || comment) && !m_sql.isEmpty()) {
        m_sql += u' ';
    }
    m_sql += text;
}

void SqliteEmitter::emitUpTo(size_t end)
{
    while (m_next < end) {
        emitToken(m_tokens[m_next]);
        ++m_next;
    }
}

void SqliteEmitter::emitToken(const SqlToken &token)
{
    if (token.is("like"_L1)) {
        append(m_wildcards == Wildcards::Asterisk ? u"GLOB" : u"LIKE", true);
    } else if (token.is("isnull"_L1) && symbolAt(m_next + 1, u'(')) {
        m_nullTests.push_back(m_depth); // "isnull(x)" becomes "((x) is null)", which an index can answer
        append(u"(", token.blankBefore);
    } else if (token.kind == SqlToken::Kind::Text && token.text.front() == u'"') {
        append(singleQuoted(token.text), token.blankBefore);
    } else {
        append(token.text, token.blankBefore);
        m_depth += isSymbol(token, u'(') ? 1 : isSymbol(token, u')') ? -1 : 0;
        closeNullTest(token);
    }
}

void SqliteEmitter::closeNullTest(const SqlToken &token)
{
    if (isSymbol(token, u')') && !m_nullTests.empty() && m_nullTests.back() == m_depth) {
        append(u"is null)", true);
        m_nullTests.pop_back();
    }
}

/// The position of the comma or bracket that ends the column definition at hand.
size_t SqliteEmitter::columnEnd() const
{
    int depth = 0;
    size_t position = m_next;
    for (; position < m_tokens.size(); ++position) {
        const SqlToken &token = m_tokens[position];
        if (depth == 0 && (isSymbol(token, u',') || isSymbol(token, u')'))) {
            break;
        }
        depth += isSymbol(token, u'(') ? 1 : isSymbol(token, u')') ? -1 : 0;
    }
    return position;
}

void SqliteEmitter::emitCreateTable()
{
    while (m_next < m_tokens.size() && !symbolAt(m_next, u'(')) {
        emitUpTo(m_next + 1);
    }
    while (m_next < m_tokens.size() && !symbolAt(m_next, u')')) {
        emitUpTo(m_next + 1); // the bracket or comma before the column
        emitColumn(columnEnd());
    }
    emitUpTo(m_tokens.size());
}

void SqliteEmitter::emitColumn(size_t end)
{
    if (m_next + 1 >= end) {
        return emitUpTo(end);
    }
    const QLatin1StringView type = sqliteType(m_tokens[m_next + 1]);
    if (type.isEmpty()) {
        return emitUpTo(end);
    }
    emitUpTo(m_next + 1);
    append(QString(type), true);
    ++m_next;
    if (symbolAt(m_next, u'(')) { // a width, which SQLite does not keep
        m_next += 3;
    }
    if (type == autoNumber && at(m_next, "primary"_L1) && at(m_next + 1, "key"_L1)) {
        m_next += 2;
    }
    emitUpTo(end);
}

/// Index names are per table in the given words and per database here, so the table's name goes in front.
void SqliteEmitter::emitCreateIndex(size_t nameAt)
{
    emitUpTo(nameAt);
    const QStringView table = nameAt + 2 < m_tokens.size() ? m_tokens[nameAt + 2].name() : QStringView();
    append(u'[' + table.toString() + u'_' + m_tokens[nameAt].name().toString() + u']', true);
    ++m_next;
    emitUpTo(m_tokens.size());
}

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
        const bool end = isSymbol(tokens[i], u';');
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
    if (!tokens.empty() && isSymbol(tokens.back(), u';')) {
        tokens.pop_back();
    }
    const auto from = std::ranges::find_if(tokens, [](const SqlToken &token) { return token.is("from"_L1); });
    if (from - tokens.begin() < 2 || tokens.end() - from < 2 || !tokens.front().is("select"_L1)) {
        return {};
    }
    const auto tail = from + 2;
    const bool listComputes =
        std::any_of(tokens.begin(), from, [](auto &token) { return isSymbol(token, u'('); });
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
