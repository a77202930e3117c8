#include "store/engine/SqliteEmitter.h"

#include "core/Error.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr auto autoNumber = "INTEGER PRIMARY KEY AUTOINCREMENT"_L1;

// What a column type of the given words is here. "Memo" as it stands would have numeric affinity: '00123'
// would be kept as 123.
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

// The text in single quotes: SQLite would first take a double-quoted one for a name.
QString singleQuoted(QStringView text)
{
    QString inner = text.sliced(1).chopped(1).toString();
    inner.replace(u"\"\""_s, u"\""_s);
    inner.replace(u"'"_s, u"''"_s);
    return u'\'' + inner + u'\'';
}

// Writes the tokens of one statement in SQLite's words.
class SqliteEmitter
{
public:
    SqliteEmitter(const SqlTokens &sql, Wildcards wildcards)
        : m_tokens(sql.begin(), sql.statementEnd()), m_wildcards(wildcards)
    {}
    // Throws core::Error when a second statement follows.
    QString emitted();

private:
    bool at(size_t position, QLatin1StringView word) const
    {
        return position < m_tokens.size() && m_tokens[position].is(word);
    }
    bool symbolAt(size_t position, char16_t symbol) const
    {
        return position < m_tokens.size() && m_tokens[position].isSymbol(symbol);
    }
    void emitUpTo(size_t end);
    void emitToken(const SqlToken &token);
    void closeNullTest(const SqlToken &token);
    void emitCreateTable();
    void emitColumn(size_t end);
    void emitCreateIndex(size_t nameAt);
    size_t columnEnd() const;
    void append(QStringView text, bool blankBefore);

    SqlTokens m_tokens;
    Wildcards m_wildcards;
    size_t m_next = 0;
    int m_depth = 0;              // of the open brackets
    std::vector<int> m_nullTests; // the depths of the open "isnull("
    QString m_sql;
};

QString SqliteEmitter::emitted()
{
    if (std::ranges::any_of(m_tokens, [](const SqlToken &token) { return token.isSymbol(u';'); })) {
        throw core::Error(1, u"characters found after the end of the statement"_s);
    }
    const bool create = at(0, "create"_L1);
    const size_t indexAt = at(1, "unique"_L1) ? 2 : 1;
    if (create && at(1, "table"_L1)) {
        emitCreateTable();
    } else if (at(0, "alter"_L1) && at(1, "table"_L1) && at(3, "add"_L1) && at(4, "column"_L1)) {
        constexpr size_t columnAt = 5;
        emitUpTo(columnAt);
        emitColumn(m_tokens.size());
    } else if (create && at(indexAt, "index"_L1) && at(indexAt + 2, "on"_L1)) {
        emitCreateIndex(indexAt + 1);
    } else {
        emitUpTo(m_tokens.size());
    }
    return m_sql;
}

// Two symbols that were written apart, or would begin a comment together, never meet: the given words know
// no comments, and a value typed by the operator must not cut a statement short.
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
        m_depth += token.isSymbol(u'(') ? 1 : token.isSymbol(u')') ? -1 : 0;
        closeNullTest(token);
    }
}

void SqliteEmitter::closeNullTest(const SqlToken &token)
{
    if (token.isSymbol(u')') && !m_nullTests.empty() && m_nullTests.back() == m_depth) {
        append(u"is null)", true);
        m_nullTests.pop_back();
    }
}

// The position of the comma or bracket that ends the column definition at hand.
size_t SqliteEmitter::columnEnd() const
{
    int depth = 0;
    size_t position = m_next;
    for (; position < m_tokens.size(); ++position) {
        const SqlToken &token = m_tokens[position];
        if (depth == 0 && (token.isSymbol(u',') || token.isSymbol(u')'))) {
            break;
        }
        depth += token.isSymbol(u'(') ? 1 : token.isSymbol(u')') ? -1 : 0;
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

// Index names are per table in the given words and per database here, so the table's name goes in front.
void SqliteEmitter::emitCreateIndex(size_t nameAt)
{
    emitUpTo(nameAt);
    const QStringView table = nameAt + 2 < m_tokens.size() ? m_tokens[nameAt + 2].name() : QStringView();
    append(u'[' + table.toString() + u'_' + m_tokens[nameAt].name().toString() + u']', true);
    ++m_next;
    emitUpTo(m_tokens.size());
}

} // namespace

QString toSqlite(const SqlTokens &sql, Wildcards wildcards)
{
    return SqliteEmitter(sql, wildcards).emitted();
}

} // namespace store
