#include "core/TextUtilities.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace core {

QString DigitsOnly(QStringView text)
{
    QString digits(text.size(), Qt::Uninitialized);
    const auto end = std::ranges::copy_if(text, digits.begin(), isDigit).out;
    digits.truncate(end - digits.begin());
    return digits;
}

QString TrimNulls(QStringView text)
{
    QString kept = text.toString();
    kept.remove(QChar(u'\0'));
    return kept.trimmed();
}

QVariant NullToEmpty(const QVariant &value)
{
    return value.isNull() ? QVariant(QString()) : value;
}

QVariant NullToZero(const QVariant &value)
{
    return value.isNull() ? QVariant(0) : value;
}

qint32 leadingNumber(QStringView text)
{
    const QStringView rest = text.trimmed();
    qsizetype length = rest.startsWith(u'-') || rest.startsWith(u'+') ? 1 : 0;
    while (length < rest.size() && isDigit(rest.at(length))) {
        ++length;
    }
    return rest.first(length).toInt();
}

namespace {

bool isBidiControl(char32_t code)
{
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) || code == 0x200E ||
           code == 0x200F || code == 0x061C;
}

// Text widgets break the line at some of the noncharacters, too.
bool isUnfit(char32_t code, QChar::Category category)
{
    return MyIn(category, QChar::Other_Control, QChar::Other_Surrogate, QChar::Separator_Line,
                QChar::Separator_Paragraph) ||
           isBidiControl(code) || QChar::isNonCharacter(code);
}

bool isPrintableAscii(QChar character)
{
    return character >= u' ' && character <= u'~';
}

} // namespace

QString shownText(QStringView text, qsizetype maxLength)
{
    constexpr int maxMarks = 8;
    if (text.size() <= maxLength && std::all_of(text.begin(), text.end(), isPrintableAscii)) {
        return text.toString();
    }
    QString shown;
    shown.reserve(std::min(text.size(), maxLength));
    int marks = 0;
    for (qsizetype at = 0; at < text.size();) {
        const auto [code, units] = codePointAt(text, at);
        const QStringView character = text.sliced(std::exchange(at, at + units), units);
        const QChar::Category category = QChar::category(code);
        marks = category <= QChar::Mark_Enclosing ? marks + 1 : 0;
        if (marks > maxMarks) {
            continue;
        }
        if (shown.size() + units > maxLength) {
            break;
        }
        shown += isUnfit(code, category) ? QStringView(u" ") : character;
    }
    return shown;
}

QString isolated(const QString &text)
{
    constexpr QChar firstStrongIsolate(0x2068);
    constexpr QChar popDirectionalIsolate(0x2069);
    return firstStrongIsolate + text + popDirectionalIsolate;
}

QString callerName(const QString &description, const QString &number)
{
    const bool hasLetters = std::ranges::any_of(description, [](QChar c) { return c.isLetter(); });
    const bool repeatsNumber = !hasLetters && DigitsOnly(description) == DigitsOnly(number);
    return repeatsNumber ? QString() : description.trimmed();
}

QString titleOf(const QString &name, const QString &window)
{
    const QString shown = shownText(name).trimmed();
    if (shown.isEmpty()) {
        return window;
    }
    const bool sameDirection = shown.isRightToLeft() == window.isRightToLeft();
    return (sameDirection ? shown : isolated(shown)) + u" - "_s + window;
}

QString questionAbout(const QString &name, const QString &question)
{
    const QString shown = shownText(name).trimmed();
    return shown.isEmpty() ? question : shown + u"\n\n"_s + question;
}

QString spreadsheetCell(QString text)
{
    static const QRegularExpression formula(u"^\\s*([=@]|[+-](?!\\s*$|[0-9][0-9\\s.,]*$))"_s);
    for (const QChar breaking : u"\t\r\n"_s) {
        text.replace(breaking, u' ');
    }
    return text.contains(formula) ? u'\'' + text : text;
}

} // namespace core
