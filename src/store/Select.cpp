#include "store/Select.h"

#include "core/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

namespace {

using Place = SqlTokens::Place;
using Pieces = std::vector<std::pair<Place, Place>>;

bool isOneOf(const SqlToken &token, std::initializer_list<QLatin1StringView> words)
{
    return std::ranges::any_of(words, [&](QLatin1StringView word) { return token.is(word); });
}

// Left open, a bracket would take in what is added behind it; closed once too often, it would end ours.
bool bracketsMatch(const SqlTokens &tokens)
{
    int depth = 0;
    for (const SqlToken &token : tokens) {
        depth += token.isSymbol(u'(') ? 1 : token.isSymbol(u')') ? -1 : 0;
        if (depth < 0) {
            return false;
        }
    }
    return depth == 0;
}

// The pieces between the separators that stand outside of brackets.
template <typename IsSeparator>
Pieces pieces(Place first, Place end, IsSeparator isSeparator)
{
    Pieces found;
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

std::vector<Select::ColumnName> namesIn(Place first, Place end)
{
    std::vector<Select::ColumnName> names;
    for (Place each = first; each != end; ++each) {
        const bool qualified = std::distance(each, end) > 2 && each[1].isSymbol(u'.');
        const QString name = each->name().toString();
        if (!name.isEmpty()) {
            names.push_back(qualified ? Select::ColumnName{name, each[2].name().toString()}
                                      : Select::ColumnName{{}, name});
            each += qualified ? 2 : 0;
        }
    }
    return names;
}

// What "and" joins; one piece where another word binds its neighbours in a different way.
Pieces andPieces(Place first, Place end)
{
    const bool joined = std::none_of(first, end,
                                     [](auto &token) {
                                         return isOneOf(token, {"between"_L1, "case"_L1});
                                     }) &&
                        pieces(first, end, [](auto &token) { return token.is("or"_L1); }).size() == 1;
    return pieces(first, end, [joined](auto &token) { return joined && token.is("and"_L1); });
}

// The words that make a select more than the rows of its tables.
bool needsWholeResult(const SqlToken &token)
{
    return isOneOf(token,
                   {"distinct"_L1, "group"_L1, "union"_L1, "join"_L1, "limit"_L1, "as"_L1, "select"_L1});
}

// One table or two; none where they are not simply named.
QStringList tablesIn(Place first, Place end)
{
    QStringList names;
    for (const auto &[begin, last] : pieces(first, end, [](auto &token) { return token.isSymbol(u','); })) {
        names.append(last - begin == 1 ? begin->name().toString() : QString());
    }
    return names.size() > 2 || names.contains(QString()) ? QStringList() : names;
}

} // namespace

Select Select::wholeTable(const QString &table)
{
    return {u"*"_s, {}, {table}, {}, {}, {}};
}

SqlTokens Select::where(const SqlTokens &oneMore) const
{
    SqlTokens words;
    const auto add = [&words](const SqlTokens &condition) {
        words += words.empty() ? u"where"_s : u"and"_s;
        words += condition;
    };
    for (const Condition &condition : conditions) {
        add(condition.words);
    }
    if (!oneMore.empty()) {
        add(oneMore);
    }
    return words;
}

SqlTokens Select::inOrder(const SqlTokens &columnList) const
{
    return u"select"_s + columnList + u"from"_s + bracketed(table()) + where() + u"order by"_s +
           (order.empty() ? u"rowid"_s : order);
}

bool isAbout(const Select::Condition &condition, const QString &table, const QStringList &columns,
             const QStringList &others)
{
    return std::ranges::all_of(condition.names, [&](const Select::ColumnName &column) {
        return column.table.isEmpty() ? columns.contains(column.name, Qt::CaseInsensitive) ||
                                            !others.contains(column.name, Qt::CaseInsensitive)
                                      : column.table.compare(table, Qt::CaseInsensitive) == 0;
    });
}

std::optional<Select> parseSelect(const SqlTokens &tokens)
{
    const Place first = tokens.begin();
    const Place end = tokens.statementEnd();
    const auto wordFrom = [end](Place from, QLatin1StringView word) {
        return std::find_if(from, end, [&](const SqlToken &token) { return token.is(word); });
    };
    const Place from = wordFrom(first, "from"_L1);
    const Place where = wordFrom(from, "where"_L1);
    const Place order = wordFrom(where == end ? from : where, "order"_L1);
    const bool simple = from - first >= 2 && from != end && first->is("select"_L1) && bracketsMatch(tokens) &&
                        std::none_of(first, from, [](auto &token) { return token.isSymbol(u'('); }) &&
                        std::none_of(first + 1, end, needsWholeResult) && (order == end || end - order > 2);
    const QStringList tables = simple ? tablesIn(from + 1, std::min(where, order)) : QStringList();
    if (tables.isEmpty()) {
        return {};
    }
    Select select{SqlTokens(first + 1, from), {}, tables, {}, {}, {}};
    if (order != end) {
        select.order = SqlTokens(order + 2, end);
        select.orderColumn = end - order == 3 ? order[2].name().toString() : QString();
    }
    const auto isComma = [](const SqlToken &token) { return token.isSymbol(u','); };
    for (const auto &[begin, last] : pieces(first + 1, from, isComma)) {
        select.names.append(begin == last ? QString() : std::prev(last)->name().toString());
    }
    for (const auto &[begin, last] : where == end ? Pieces() : andPieces(where + 1, order)) {
        select.conditions.push_back({u"("_s + SqlTokens(begin, last) + u")"_s, namesIn(begin, last)});
    }
    return select;
}

Select selectOf(const QString &sql, qsizetype tables)
{
    const std::optional<Select> select = parseSelect(sql);
    if (!select || select->tables.size() != tables) {
        throw core::Error(0, u"no select whose rows can be told apart: "_s + sql);
    }
    return *select;
}

} // namespace store
