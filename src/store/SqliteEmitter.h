#pragma once

#include "store/SqlTokens.h"
#include "store/Wildcards.h"

#include <QString>

#include <utility>
#include <vector>

namespace store {

/// Writes the tokens of one statement in SQLite's words.
class SqliteEmitter
{
public:
    SqliteEmitter(std::vector<SqlToken> tokens, Wildcards wildcards)
        : m_tokens(std::move(tokens)), m_wildcards(wildcards)
    {}
    /// Throws core::Error when a second statement follows.
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

} // namespace store
