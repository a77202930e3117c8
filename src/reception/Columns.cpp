#include "reception/Columns.h"

namespace reception {

namespace {

qsizetype columnsOf(char32_t code, core::ColumnRule rule)
{
    constexpr char32_t firstDoubleByte = 255;
    constexpr char32_t firstFarEastern = 0x2E80;
    return code < (rule == core::ColumnRule::DoubleByte ? firstDoubleByte : firstFarEastern) ? 1 : 2;
}

qsizetype unitsAt(QStringView text, qsizetype position)
{
    const bool pair = text.at(position).isHighSurrogate() && position + 1 < text.size() &&
                      text.at(position + 1).isLowSurrogate();
    return pair ? 2 : 1;
}

char32_t codeAt(QStringView text, qsizetype position, qsizetype units)
{
    return units == 2 ? QChar::surrogateToUcs4(text.at(position), text.at(position + 1))
                      : text.at(position).unicode();
}

} // namespace

qsizetype ByteColumns(QStringView text, core::ColumnRule rule)
{
    qsizetype columns = 0;
    for (qsizetype at = 0, units = 0; at < text.size(); at += units) {
        units = unitsAt(text, at);
        columns += columnsOf(codeAt(text, at, units), rule);
    }
    return columns;
}

QString MidByCols(QStringView text, qsizetype startCol, qsizetype width, core::ColumnRule rule)
{
    const qsizetype lastCol = startCol + width - 1;
    qsizetype column = 0;
    qsizetype first = text.size();
    qsizetype end = 0;
    for (qsizetype at = 0, units = 0; at < text.size(); at += units) {
        units = unitsAt(text, at);
        column += columnsOf(codeAt(text, at, units), rule);
        if (column > lastCol) {
            break;
        }
        if (column >= startCol) {
            first = std::min(first, at);
            end = at + units;
        }
    }
    return first < end ? text.sliced(first, end - first).toString() : QString();
}

} // namespace reception
