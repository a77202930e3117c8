#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

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
    QStringView text;
    bool blankBefore = false;

    /// Keywords are matched without regard to case.
    bool is(QLatin1StringView word) const;
    bool isSymbol(char16_t symbol) const { return kind == Kind::Symbol && text == QChar(symbol); }
    /// The name that a word or a bracketed name stands for; null for a text or a symbol.
    QStringView name() const;
};

/// Cuts one statement into its pieces; `sql` must outlive them. Throws core::Error for a quote or bracket
/// that nothing closes.
std::vector<SqlToken> tokenize(QStringView sql);

/// What stands from the one token to the other in the statement that both are cut from.
QString wordsOf(const SqlToken &first, const SqlToken &last);

/// A value as it stands between single quotes.
QString quoted(const QString &value);

/// A name in the brackets that tell it from a keyword.
QString bracketed(const QString &name);

/// The statements of a schema text, cut at their semicolons.
QStringList statementsOf(QStringView schemaSql);

} // namespace store
