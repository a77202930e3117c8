#include "oldfiles/Values.h"

#include <QDate>
#include <QTime>
#include <QUuid>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace oldfiles {

namespace {

// Digits with a point before the last `scale` of them, without noughts behind.
QString withPoint(QString digits, int scale, bool negative)
{
    digits = digits.rightJustified(scale + 1, u'0');
    if (scale > 0) {
        digits.insert(digits.size() - scale, u'.');
        while (digits.endsWith(u'0')) {
            digits.chop(1);
        }
        if (digits.endsWith(u'.')) {
            digits.chop(1);
        }
    }
    return negative && digits != u'0' ? u'-' + digits : digits;
}

} // namespace

// Whole days count from the thirtieth of December 1899, backwards too; the fraction is the time of that day
// whatever the sign.
QString dateText(double days)
{
    constexpr double first = -657434; // the year 100
    constexpr double last = 2958466;  // the year 10000
    constexpr qint64 epoch = 2415019;
    constexpr qint64 secondsOfDay = 86400;
    if (!(days > first - 1 && days < last)) {
        return QString::number(days, 'g', QLocale::FloatingPointShortest);
    }
    const double whole = std::trunc(days);
    const auto seconds = static_cast<qint64>(std::floor(std::fabs(days - whole) * secondsOfDay + 0.5));
    const QDate date = QDate::fromJulianDay(epoch + static_cast<qint64>(whole) + seconds / secondsOfDay);
    const QTime time = QTime::fromMSecsSinceStartOfDay(static_cast<int>(seconds % secondsOfDay) * 1000);
    return date.toString(Qt::ISODate) + u' ' + time.toString(u"HH:mm:ss"_s);
}

QString currencyText(qint64 tenThousandths)
{
    QString digits = QString::number(tenThousandths);
    digits.remove(u'-');
    return withPoint(digits, 4, tenThousandths < 0);
}

QString decimalText(const Bytes &value, int scale)
{
    constexpr quint8 negative = 0x80;
    std::array<quint32, 4> number = {value.u32(1), value.u32(5), value.u32(9),
                                     value.u32(13)}; // highest first
    QString digits;
    while (std::ranges::any_of(number, [](quint32 word) { return word != 0; })) {
        quint64 rest = 0;
        for (quint32 &word : number) {
            rest = (rest << 32) | word;
            word = static_cast<quint32>(rest / 10);
            rest %= 10;
        }
        digits.prepend(QChar(u'0' + static_cast<char16_t>(rest)));
    }
    return withPoint(digits.isEmpty() ? u"0"_s : digits, scale, (value.u8(0) & negative) != 0);
}

QString guidText(const Bytes &value)
{
    const auto *last = value.slice(8, 8).view().data();
    std::array<uchar, 8> bytes = {};
    std::copy_n(last, bytes.size(), bytes.begin());
    return QUuid(value.u32(0), value.u16(4), value.u16(6), bytes[0], bytes[1], bytes[2], bytes[3], bytes[4],
                 bytes[5], bytes[6], bytes[7])
        .toString()
        .toUpper();
}

} // namespace oldfiles
