#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace store {

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

} // namespace store
