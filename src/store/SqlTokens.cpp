#include "store/SqlTokens.h"

#include "core/Error.h"

using namespace Qt::StringLiterals;

namespace store {

namespace {

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'$' || c.unicode() > 0x7F;
}

// The length of the quoted piece at the start of `text`; a doubled closing quote stands for itself.
qsizetype quotedLength(QStringView text, QChar close)
{
    const bool doubles = close != u']';
    for (qsizetype i = 1; i < text.size(); ++i) {
        if (text[i] != close) {
            continue;
        }
        if (doubles && i + 1 < text.size() && text[i + 1] == close) {
            ++i;
            continue;
        }
        return i + 1;
    }
    throw core::Error(0, u"syntax error: nothing closes "_s + text.front());
}

qsizetype wordLength(QStringView text)
{
    qsizetype length = 0;
    while (length < text.size() && isWordCharacter(text[length])) {
        ++length;
    }
    return length;
}

SqlToken firstToken(QStringView rest)
{
    const QChar c = rest.front();
    if (c == u'[') {
        return {SqlToken::Kind::Name, rest.first(quotedLength(rest, u']'))};
    }
    if (c == u'\'' || c == u'"') {
        return {SqlToken::Kind::Text, rest.first(quotedLength(rest, c))};
    }
    if (const qsizetype length = wordLength(rest); length > 0) {
        return {SqlToken::Kind::Word, rest.first(length)};
    }
    return {SqlToken::Kind::Symbol, rest.first(1)};
}

} // namespace

bool SqlToken::is(QLatin1StringView word) const
{
    return kind != Kind::Name && kind != Kind::Text && text.compare(word, Qt::CaseInsensitive) == 0;
}

QStringView SqlToken::name() const
{
    if (kind == Kind::Name) {
        return text.sliced(1).chopped(1);
    }
    return kind == Kind::Word ? text : QStringView();
}

std::vector<SqlToken> tokenize(QStringView sql)
{
    std::vector<SqlToken> tokens;
    bool blank = false;
    for (qsizetype i = 0; i < sql.size();) {
        if (sql[i].isSpace()) {
            blank = true;
            ++i;
            continue;
        }
        tokens.push_back(firstToken(sql.sliced(i)));
        tokens.back().blankBefore = std::exchange(blank, false);
        i += tokens.back().text.size();
    }
    return tokens;
}

QString wordsOf(const SqlToken &first, const SqlToken &last)
{
    return QStringView(first.text.begin(), last.text.end()).toString();
}

QString quoted(const QString &value)
{
    return QString(value).replace(u"'"_s, u"''"_s);
}

QString bracketed(const QString &name)
{
    return u'[' + name + u']';
}

QStringList statementsOf(QStringView schemaSql)
{
    const std::vector<SqlToken> tokens = tokenize(schemaSql);
    QStringList statements;
    size_t first = 0;
    for (size_t i = 0; i < tokens.size(); ++i) {
        const bool end = tokens[i].isSymbol(u';');
        if (end && i > first) {
            statements.append(wordsOf(tokens[first], tokens[i - 1]));
        } else if (!end && i + 1 == tokens.size()) {
            statements.append(wordsOf(tokens[first], tokens[i]));
        }
        first = end ? i + 1 : first;
    }
    return statements;
}

} // namespace store
