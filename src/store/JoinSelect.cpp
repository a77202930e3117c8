#include "store/JoinSelect.h"

#include "core/Error.h"
#include "store/SqlTokens.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

namespace {

using Tokens = std::vector<SqlToken>;
using Place = Tokens::const_iterator;

QString textBetween(Place first, Place end)
{
    return first == end ? QString() : QStringView(first->text.begin(), std::prev(end)->text.end()).toString();
}

Place wordFrom(Place first, Place end, QLatin1StringView word)
{
    return std::find_if(first, end, [&](const SqlToken &token) { return token.is(word); });
}

/// The pieces between the separators that stand outside of brackets.
template <typename IsSeparator>
std::vector<std::pair<Place, Place>> pieces(Place first, Place end, const IsSeparator &isSeparator)
{
    std::vector<std::pair<Place, Place>> found;
    int depth = 0;
    Place begin = first;
    for (Place each = first; each != end; ++each) {
        depth += each->isSymbol(u'(') ? 1 : each->isSymbol(u')') ? -1 : 0;
        if (depth == 0 && isSeparator(*each)) {
            found.emplace_back(begin, each);
            begin = std::next(each);
        }
    }
    found.emplace_back(begin, end);
    return found;
}

} // namespace

QString JoinSelect::over(const QString &columnList, const QString &first, const QString &second,
                         const QString &condition) const
{
    // The engine goes through tables that are joined in this way in the order in which they stand.
    return u"select "_s + columnList + u" from ["_s + first + u"] cross join ["_s + second + u"] where "_s +
           conditions.join(u" and "_s) + condition + u' ' + order;
}

QString JoinSelect::rowByKeys() const
{
    return u"select "_s + columns + u" from ["_s + tables.details + u"],["_s + tables.masters +
           u"] where ["_s + tables.details + u"].rowid=? and ["_s + tables.masters + u"].rowid=?"_s;
}

JoinSelect takeApart(const QString &select, const JoinTables &tables)
{
    const Tokens tokens = tokenize(select);
    const Place end = tokens.end();
    const Place from = wordFrom(tokens.begin(), end, "from"_L1);
    const Place where = wordFrom(from, end, "where"_L1);
    const Place order = wordFrom(where, end, "order"_L1);
    if (from - tokens.begin() < 2 || where == end || !tokens.front().is("select"_L1)) {
        throw core::Error(1, u"no select over two joined tables"_s);
    }
    JoinSelect apart{tables, textBetween(tokens.begin() + 1, from), {}, {}, textBetween(order, end)};
    const auto isComma = [](const SqlToken &token) { return token.isSymbol(u','); };
    for (const auto &[first, last] : pieces(tokens.begin() + 1, from, isComma)) {
        apart.names.append(first == last ? QString() : std::prev(last)->name().toString());
    }
    const auto isAnd = [](const SqlToken &token) { return token.is("and"_L1); };
    for (const auto &[first, last] : pieces(where + 1, order, isAnd)) {
        apart.conditions.append(textBetween(first, last));
    }
    return apart;
}

} // namespace store
