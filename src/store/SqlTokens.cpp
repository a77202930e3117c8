#include "store/SqlTokens.h"

#include "core/Error.h"

#include <algorithm>
#include <iterator>

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
        return {SqlToken::Kind::Name, rest.first(quotedLength(rest, u']')).toString()};
    }
    if (c == u'\'' || c == u'"') {
        return {SqlToken::Kind::Text, rest.first(quotedLength(rest, c)).toString()};
    }
    if (const qsizetype length = wordLength(rest); length > 0) {
        return {SqlToken::Kind::Word, rest.first(length).toString()};
    }
    return {SqlToken::Kind::Symbol, c};
}

} // namespace

bool SqlToken::is(QLatin1StringView word) const
{
    return kind != Kind::Name && kind != Kind::Text && text.compare(word, Qt::CaseInsensitive) == 0;
}

QStringView SqlToken::name() const
{
    if (kind == Kind::Name) {
        return QStringView(text).sliced(1).chopped(1);
    }
    return kind == Kind::Word ? QStringView(text) : QStringView();
}

SqlTokens::SqlTokens(const QString &words)
{
    bool blank = false;
    for (qsizetype i = 0; i < words.size();) {
        if (words[i].isSpace()) {
            blank = true;
            ++i;
            continue;
        }
        m_tokens.push_back(firstToken(QStringView(words).sliced(i)));
        m_tokens.back().blankBefore = std::exchange(blank, false);
        i += m_tokens.back().text.size();
    }
}

SqlTokens &SqlTokens::operator+=(const SqlTokens &part)
{
    const size_t joint = m_tokens.size();
    m_tokens.insert(m_tokens.end(), part.begin(), part.end());
    if (joint < m_tokens.size()) {
        m_tokens[joint].blankBefore = true;
    }
    return *this;
}

QString quoted(const QString &value)
{
    return QString(value).replace(u"'"_s, u"''"_s);
}

QString bracketed(const QString &name)
{
    return u'[' + name + u']';
}

std::vector<SqlTokens> statementsOf(const QString &schemaSql)
{
    const SqlTokens schema(schemaSql);
    std::vector<SqlTokens> statements;
    for (auto first = schema.begin(); first != schema.end();) {
        const auto end =
            std::find_if(first, schema.end(), [](const SqlToken &token) { return token.isSymbol(u';'); });
        if (end != first) {
            statements.emplace_back(first, end);
        }
        first = end == schema.end() ? end : std::next(end);
    }
    return statements;
}

} // namespace store
