#include "imports/RowReading.h"

#include "core/TextUtilities.h"
#include "language/Languages.h"
#include "language/ShownTexts.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr qsizetype fewestOfParted = 5; // less of a number that blanks part is an area code or the like

const QRegularExpression &betweenNumbers()
{
    static const QRegularExpression signs(u"[,;:|\\r\\n\\x{3001}\\x{FF0C}\\x{FF1B}\\x{060C}]"_s);
    return signs;
}

const QRegularExpression &insideNumbers()
{
    static const QRegularExpression signs(
        u"[\\s.\\x{00A0}\\x{2009}\\x{202F}\\x{200E}\\x{200F}\\x{202A}-\\x{202E}]+"_s);
    return signs;
}

// Digits of every script are those of a call; spreadsheets mark a text by an apostrophe, or as a formula.
QString plainNumber(QString text)
{
    for (QChar &sign : text) {
        if (const int digit = sign.digitValue(); digit >= 0 && sign.isDigit()) {
            sign = QChar(u'0' + digit);
        } else if (sign == QChar(0xFF0B)) {
            sign = u'+';
        }
    }
    text = text.trimmed();
    if (text.startsWith("=\""_L1) && text.endsWith(u'"')) {
        text = text.mid(2).chopped(1);
    }
    return text.startsWith(u'\'') ? text.mid(1) : text;
}

QString inOneLine(const QString &text)
{
    static const QRegularExpression breaks(u"[\\r\\n\\v\\f\\x{2028}\\x{2029}]"_s);
    QStringList lines = text.split(breaks);
    for (QString &line : lines) {
        line = line.trimmed();
    }
    lines.removeAll(QString());
    return lines.join(u", "_s).replace(u'\t', u' ');
}

QString inLines(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    return text.trimmed().replace(u'\n', u"\r\n"_s);
}

QString signBetween(FieldShape shape)
{
    return shape == FieldShape::Name      ? u" "_s
           : shape == FieldShape::Lines   ? u"\r\n"_s
           : shape == FieldShape::Numbers ? u","_s
                                          : u", "_s;
}

// Yes and no as lists have them, in the words of every language.
QHash<QString, QString> flagWords()
{
    QHash<QString, QString> flags;
    for (const QString &word : {u"y"_s, u"1"_s, u"true"_s, u"x"_s, u"v"_s, u"✓"_s, u"vip"_s}) {
        flags.insert(word, u"1"_s);
    }
    for (const QString &word : {u"n"_s, u"0"_s, u"false"_s, u"-"_s}) {
        flags.insert(word, u"0"_s);
    }
    for (const language::Language &each : language::languages()) {
        const language::BuiltInTexts texts(each.code);
        flags.insert(texts.Lms(u"Yes"_s).toCaseFolded(), u"1"_s);
        flags.insert(texts.Lms(u"No"_s).toCaseFolded(), u"0"_s);
    }
    return flags;
}

Refusal refusalOf(RowTrouble trouble)
{
    return trouble == RowTrouble::Characters ? Refusal::Characters
           : trouble == RowTrouble::Columns  ? Refusal::Columns
                                             : Refusal::Unclosed;
}

} // namespace

QString numbersOf(const QString &cell)
{
    QStringList numbers;
    for (const QString &part : plainNumber(cell).split(betweenNumbers(), Qt::SkipEmptyParts)) {
        const QStringList pieces = part.split(insideNumbers(), Qt::SkipEmptyParts);
        const bool areNumbers = pieces.size() > 1 && std::ranges::all_of(pieces, [](const QString &piece) {
                                    constexpr qsizetype wholeNumber = 7;
                                    return core::DigitsOnly(piece).size() >= wholeNumber;
                                });
        const QString number = pieces.join(areNumbers ? u","_s : QString());
        if (!number.isEmpty()) {
            numbers.append(number);
        }
    }
    return numbers.join(u',');
}

QStringList digitsOf(const QString &numbers)
{
    QStringList found;
    for (const QString &part : numbers.split(betweenNumbers(), Qt::SkipEmptyParts)) {
        const QStringList pieces = part.split(insideNumbers(), Qt::SkipEmptyParts);
        for (const QString &piece : pieces) {
            const QString digits = core::DigitsOnly(piece);
            if (digits.size() >= (pieces.size() > 1 ? fewestOfParted : 1)) {
                found.append(digits);
            }
        }
    }
    return found;
}

RowReading::RowReading(const ListTarget &target, const ListPlan &plan) : m_target(target), m_plan(plan) {}

ReadRow RowReading::read(const SourceRow &row) const
{
    ReadRow result{.texts = QStringList(m_target.fields.size(), QString())};
    const auto refuse = [&](RefusedRow refused) {
        refused.row = row.number;
        result.refused = refused;
        return result;
    };
    if (row.trouble != RowTrouble::None) {
        return refuse({.why = refusalOf(row.trouble)});
    }
    for (qsizetype column = 0; column < std::min(row.cells.size(), m_plan.fieldOfColumn.size()); ++column) {
        const int field = m_plan.fieldOfColumn.at(column);
        if (field < 0) {
            continue;
        }
        if (const auto refused = add(field, row.cells.at(column), result.texts[field])) {
            return refuse(*refused);
        }
    }
    if (m_plan.fixedField >= 0) {
        QString &text = result.texts[m_plan.fixedField];
        text.clear();
        if (const auto refused = add(m_plan.fixedField, m_plan.fixedText, text)) {
            return refuse(*refused);
        }
    }
    for (int field = 0; field < result.texts.size(); ++field) {
        const qsizetype width = m_target.fields.at(field).width;
        if (result.texts.at(field).size() > (width > 0 ? width : mostCellCharacters)) {
            return refuse({.why = Refusal::TooLong, .field = field});
        }
    }
    return result;
}

std::optional<RefusedRow> RowReading::add(int field, const QString &cell, QString &text) const
{
    const FieldShape shape = m_target.fields.at(field).shape;
    QString added = shape == FieldShape::Lines     ? inLines(cell)
                    : shape == FieldShape::Numbers ? numbersOf(cell)
                                                   : inOneLine(cell);
    if (added.isEmpty()) {
        return {};
    }
    if (shape == FieldShape::Flag) {
        static const QHash<QString, QString> words = flagWords();
        text = words.value(added.toCaseFolded());
        return text.isEmpty() ? std::optional(RefusedRow{.why = Refusal::NoFlag, .field = field})
                              : std::nullopt;
    }
    text += (text.isEmpty() ? QString() : signBetween(shape)) + added;
    return {};
}

} // namespace imports
