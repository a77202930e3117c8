#include "imports/SheetCells.h"

#include <QDateTime>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr qsizetype mostStyles = 65536;
constexpr qsizetype mostOfCode = 255;
constexpr double daysUntil10000 = 2958466;

// The formats that every program knows by their number alone, those of the Far East included.
bool isBuiltInDate(int format)
{
    return (format >= 14 && format <= 22) || (format >= 27 && format <= 36) ||
           (format >= 45 && format <= 47) || (format >= 50 && format <= 58);
}

// What is left of a format without its literal texts, colours and conditions.
QString bare(QString code)
{
    static const QRegularExpression literal(u"\"[^\"]*\"|\\[[^\\]]*\\]|\\\\.|_.|\\*."_s);
    return code.remove(literal).section(u';', 0, 0);
}

bool isDate(const QString &code)
{
    static const QRegularExpression parts(u"[ymdhs]"_s, QRegularExpression::CaseInsensitiveOption);
    return code.contains(parts);
}

bool isZeros(const QString &code)
{
    return code.size() > 1 && std::ranges::all_of(code, [](QChar sign) { return sign == u'0'; });
}

bool isPlain(const QString &number)
{
    static const QRegularExpression digits(u"^-?\\d+$"_s);
    return digits.match(number).hasMatch();
}

// Numbers of up to 15 digits are exact; some programs write them with an exponent.
QString written(const QString &number, double value)
{
    constexpr double exact = 1e15;
    if (isPlain(number)) {
        return number;
    }
    const bool isWhole = std::floor(value) == value && std::abs(value) < exact;
    return isWhole ? QString::number(value, 'f', 0) : QString::number(value, 'g', 15);
}

} // namespace

void NumberFormats::read(XmlPart &styles)
{
    bool ofCells = false;
    while (styles.next()) {
        if (styles.begins("numFmt"_L1) && m_codes.size() < mostStyles) {
            m_codes.insert(styles.attribute("numFmtId"_L1).toInt(),
                           bare(styles.attribute("formatCode"_L1).left(mostOfCode)));
        } else if (styles.begins("cellXfs"_L1) || styles.ends("cellXfs"_L1)) {
            ofCells = styles.begins("cellXfs"_L1);
        } else if (ofCells && styles.begins("xf"_L1) && m_formatOfStyle.size() < mostStyles) {
            m_formatOfStyle.append(styles.attribute("numFmtId"_L1).toInt());
        }
    }
}

QString NumberFormats::shown(const QString &number, int style) const
{
    bool isNumber = false;
    const double value = number.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value)) {
        return number;
    }
    const int format = m_formatOfStyle.value(style, 0);
    const QString code = m_codes.value(format);
    const bool showsDate = isBuiltInDate(format) || isDate(code);
    if (showsDate && value >= 0 && value < daysUntil10000) {
        return date(value);
    }
    const QString text = written(number, value);
    return isZeros(code) && isPlain(text) ? text.rightJustified(code.size(), u'0') : text;
}

QString NumberFormats::date(double days) const
{
    constexpr int secondsADay = 24 * 60 * 60;
    const auto seconds = static_cast<qint64>(std::llround(days * secondsADay));
    const QDate first = m_since1904 ? QDate(1904, 1, 1) : QDate(1899, 12, 30);
    QString time = QTime(0, 0).addSecs(int(seconds % secondsADay)).toString(u"HH:mm:ss"_s);
    const QString day = first.addDays(seconds / secondsADay).toString(u"yyyy-MM-dd"_s);
    if (seconds < secondsADay && seconds > 0) {
        return time;
    }
    return seconds % secondsADay == 0 ? day : day + u' ' + time;
}

int columnOf(QStringView reference)
{
    constexpr int letters = 26;
    constexpr int mostLetters = 3;
    int column = 0;
    int places = 0;
    for (const QChar sign : reference) {
        if (sign < u'A' || sign > u'Z' || ++places > mostLetters) {
            break;
        }
        column = column * letters + (sign.unicode() - u'A') + 1;
    }
    return column - 1;
}

} // namespace imports
