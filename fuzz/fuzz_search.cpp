#include "Support.h"
#include "core/Error.h"
#include "store/Select.h"
#include "store/SqlTokens.h"
#include "store/TextMatcher.h"
#include "store/TextOrder.h"
#include "store/engine/SqliteEmitter.h"

#include <QByteArray>

#include <array>
#include <cstdint>

using namespace Qt::StringLiterals;
using store::TextMatcher, store::Wildcards;

namespace {

/// Whatever is typed stays one text between its quotes.
void checkTypedText(const QString &typed)
{
    const QString statement = u"a='"_s + store::quoted(typed) + u'\'';
    const store::SqlTokens tokens = statement;
    require(tokens.size() == 3 && tokens[2].text == statement.sliced(2));
}

/// A statement is refused, or cut into its pieces; what is made of it is a statement again.
void checkStatement(const QString &sql)
{
    try {
        const store::SqlTokens tokens = sql;
        QString rebuilt;
        for (const store::SqlToken &token : tokens) {
            rebuilt += token.blankBefore ? u" "_s : u""_s;
            rebuilt += token.text;
        }
        require(store::SqlTokens(rebuilt).size() == tokens.size());
        for (const Wildcards wildcards : {Wildcards::Asterisk, Wildcards::Percent}) {
            store::SqlTokens(store::toSqlite(tokens, wildcards));
        }
        if (const auto select = store::parseSelect(tokens)) {
            store::SqlTokens(store::toSqlite(select->inOrder(u"rowid"_s), Wildcards::Asterisk));
            isAbout(select->conditions.empty() ? store::Select::Condition() : select->conditions.front(),
                    select->table(), {u"a"_s}, {u"b"_s});
        }
    } catch (const core::Error &) { // what cannot be run is answered with
    }
}

/// The meaning of ? and *, told as a recursion.
bool walks(QStringView text, QStringView pattern)
{
    if (pattern.isEmpty()) {
        return text.isEmpty();
    }
    if (pattern.front() == u'*') {
        return walks(text, pattern.sliced(1)) || (!text.isEmpty() && walks(text.sliced(1), pattern));
    }
    return !text.isEmpty() && (pattern.front() == u'?' || pattern.front() == text.front()) &&
           walks(text.sliced(1), pattern.sliced(1));
}

/// Letters that the bytes choose.
QString written(const QByteArray &bytes, const QString &letters)
{
    QString text;
    for (const char byte : bytes) {
        text += letters.at(quint8(byte) % letters.size());
    }
    return text;
}

/// Neighbours are letters of one script in both cases, so that few letters at a time often match.
void checkMatching(const QByteArray &bytes)
{
    constexpr qsizetype longestText = 10;
    const QString letters = u"aAbkKsſ\u212A żŻłŁ iIİı 张伟 محم ΣσςДд"_s;
    const QString few = letters.mid(quint8(bytes.at(0)) % letters.size(), 4) + u' ';
    const QString text = written(bytes.sliced(1, std::min(longestText, (bytes.size() - 1) / 2)), few);
    QString pattern =
        written(bytes.sliced(1 + text.size()).first(std::min<qsizetype>(7, bytes.size() - 1 - text.size())),
                few + u"?**"_s);
    const auto folded = [](QString in) { return in.replace(u'İ', u'i').replace(u'ı', u'i').toCaseFolded(); };
    const bool expected = walks(folded(text), folded(pattern));
    require(TextMatcher(pattern.toUtf8(), Wildcards::Asterisk).matches(text.toUtf8()) == expected);
    pattern.replace(u'*', u'%').replace(u'?', u'_');
    require(TextMatcher(pattern.toUtf8(), Wildcards::Percent).matches(text.toUtf8()) == expected);
}

int signOfOrder(const QByteArray &left, const QByteArray &right)
{
    const int order = store::compareJet(left, right);
    return (order > 0) - (order < 0);
}

/// It is an order, on bytes that are no text, too.
void checkOrder(const std::array<QByteArray, 3> &texts)
{
    const auto &[a, b, c] = texts;
    require(signOfOrder(a, a) == 0 && signOfOrder(a, b) == -signOfOrder(b, a));
    require(signOfOrder(a, b) > 0 || signOfOrder(b, c) > 0 || signOfOrder(a, c) <= 0);
}

/// Texts that differ in case, accents, width, blanks and broken bytes alone.
QByteArray alike(const QByteArray &bytes)
{
    static constexpr std::array pieces = {
        "a", "A", " ", "b", "\xC3\xA9", "\xCC\x81", "\xFF", "\xE3\x80\x80", "\xE5\xBC\xA0", "\xC5"};
    QByteArray text;
    for (const char byte : bytes) {
        text += pieces.at(quint8(byte) % pieces.size());
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    checkTypedText(QString::fromUtf8(bytes));
    checkStatement(QString::fromUtf8(bytes));
    const qsizetype third = bytes.size() / 3;
    const std::array parts = {bytes.first(third), bytes.sliced(third, third), bytes.sliced(2 * third)};
    checkOrder(parts);
    checkOrder({alike(parts[0]), alike(parts[1]), alike(parts[2])});
    TextMatcher(parts[0], Wildcards::Asterisk).matches(parts[2]);
    TextMatcher(parts[1], Wildcards::Percent).matches(parts[2]);
    if (!bytes.isEmpty()) {
        checkMatching(bytes);
    }
    return 0;
}
