#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <utility>
#include <vector>

namespace store {

/// The two worlds of like-patterns, by the way a statement reaches the database.
enum class Wildcards {
    Asterisk, ///< record-at-a-time work and data controls: * ? # [a-z] [!a-z]
    Percent,  ///< the connection of ConnectDatabase: % _
};

/// One piece of a statement, exactly as it was written.
struct SqlToken
{
    enum class Kind {
        Word,   ///< keyword, bare name or number
        Name,   ///< a name in [brackets]
        Text,   ///< a text with its quotes, single or double
        Symbol, ///< any other character
    };
    Kind kind;
    QString text;
    bool blankBefore = false;

    /// Keywords are matched without regard to case.
    bool is(QLatin1StringView word) const;
    bool isSymbol(char16_t symbol) const { return kind == Kind::Symbol && text == QChar(symbol); }
    /// The name that a word or a bracketed name stands for; null for a text or a symbol.
    QStringView name() const;
};

/// A statement in the given words, or a part of one, cut into its pieces: that is done once, and statements
/// are then put together from parts that are cut already.
class SqlTokens
{
public:
    using Place = std::vector<SqlToken>::const_iterator;

    SqlTokens() = default;
    /// Throws core::Error for a quote or bracket that nothing closes.
    SqlTokens(const QString &words);
    SqlTokens(Place first, Place end) : m_tokens(first, end) {}

    Place begin() const { return m_tokens.begin(); }
    Place end() const { return m_tokens.end(); }
    /// Without a semicolon that closes the statement.
    Place statementEnd() const { return !empty() && m_tokens.back().isSymbol(u';') ? end() - 1 : end(); }
    bool empty() const { return m_tokens.empty(); }
    size_t size() const { return m_tokens.size(); }
    const SqlToken &operator[](size_t position) const { return m_tokens[position]; }

    /// The two with a blank between them.
    friend SqlTokens operator+(SqlTokens left, const SqlTokens &right) { return std::move(left += right); }
    SqlTokens &operator+=(const SqlTokens &part);

private:
    std::vector<SqlToken> m_tokens;
};

/// A value as it stands between single quotes.
QString quoted(const QString &value);

/// A name in the brackets that tell it from a keyword.
QString bracketed(const QString &name);

/// The statements of a schema text, cut at their semicolons.
std::vector<SqlTokens> statementsOf(const QString &schemaSql);

} // namespace store
