#include "reception/Records.h"

#include "core/TextUtilities.h"
#include "reception/Columns.h"

#include <QList>
#include <QStringBuilder>

using namespace Qt::StringLiterals;

namespace reception {

namespace {

// Most of a field is the blanks that fill it: trimmed() alone asks what each of them is.
QStringView withoutPadding(QStringView field)
{
    while (field.endsWith(u' ')) {
        field.chop(1);
    }
    return field.trimmed();
}

// Reads fixed columns of one datagram.
class Fields
{
public:
    explicit Fields(const core::DatagramText &datagram)
        : m_text(datagram.text), m_columns(m_text, datagram.columns)
    {}

    // Characters, counted from 1; for columns where only single-byte characters stand.
    QString characters(qsizetype first, qsizetype width) const { return whole(m_text.mid(first - 1, width)); }
    QString trimmedCharacters(qsizetype first, qsizetype width) const
    {
        return whole(withoutPadding(m_text.mid(first - 1, width)));
    }
    QString columns(qsizetype first, qsizetype width) const { return whole(m_columns.mid(first, width)); }
    QString trimmedColumns(qsizetype first, qsizetype width) const
    {
        return whole(withoutPadding(m_columns.mid(first, width)));
    }
    QString columnsFrom(qsizetype first) const { return columns(first, m_columns.count() - first); }

private:
    QString whole(QStringView field) const
    {
        const QString text = field.toString();
        return m_columns.isAscii() ? text : core::withTonesOnLetters(text);
    }

    QStringView m_text;
    Columns m_columns;
};

// A datagram is short, and hardly ever holds the first letter of a key elsewhere: preparing a search as
// QString's own does takes longer than searching.
qsizetype placeOf(QLatin1StringView key, QStringView text)
{
    const QChar first(key.front());
    qsizetype at = text.indexOf(first);
    while (at >= 0 && !text.sliced(at).startsWith(key)) {
        at = text.indexOf(first, at + 1);
    }
    return at;
}

QString sourceOf(const QString &match)
{
    if (match.isEmpty()) {
        return {};
    }
    return match.startsWith("SPB"_L1) ? u"PHONEBOOK"_s : u"CUSTOMER"_s;
}

QString described(const QList<std::pair<QLatin1StringView, QString>> &fields)
{
    QString lines;
    for (const auto &[name, value] : fields) {
        lines += name + u": "_s + core::shownText(value) + u'\n';
    }
    return lines.trimmed();
}

} // namespace

DatagramKind kindOf(QStringView text)
{
    if (text.startsWith("<CRMV1"_L1)) {
        return DatagramKind::CallerId;
    }
    if (text.mid(1, 3) == "CID"_L1) {
        return DatagramKind::ShortCid;
    }
    if (text.mid(1, 20).trimmed() == "DETAILDES"_L1) {
        return DatagramKind::Detail;
    }
    const QStringView command = text.left(50).trimmed();
    if (command == "SENDSMALLMESSAGE"_L1) {
        return DatagramKind::SmallMessage;
    }
    if (command == "SHUTDOWNALL"_L1) {
        return DatagramKind::ShutDown;
    }
    if (command == "CHANNELSTATUS"_L1) {
        return DatagramKind::ChannelStatus;
    }
    return DatagramKind::Unknown;
}

core::CallRecord parseCallRecord(const core::DatagramText &datagram)
{
    const Fields fields(datagram);
    const QString match = fields.trimmedColumns(144, 10);
    core::CallRecord record;
    record.CallerID = fields.trimmedColumns(78, 30);
    record.IncomingTime = fields.characters(31, 19);
    record.Channel = fields.trimmedCharacters(23, 8);
    record.LineNo = fields.trimmedColumns(50, 28);
    record.SimpleDes = fields.trimmedColumns(113, 30);
    record.DetailDes = GetTcpCmdPara(datagram.text, "DETAILDES"_L1);
    record.SnText = core::DigitsOnly(match);
    record.Source = sourceOf(match);
    record.SN = core::leadingNumber(record.SnText);
    record.IfVIP = fields.trimmedColumns(194, 10);
    record.IfInBlackList = fields.trimmedColumns(184, 10);
    record.RawCid = GetTcpCmdPara(datagram.text, "RAWCID"_L1);
    record.Tail = fields.columns(204, 39);
    record.SenderIp = fields.trimmedColumns(154, 30);
    return record;
}

ShortCidRecord parseShortCid(const core::DatagramText &datagram)
{
    const Fields fields(datagram);
    return {fields.trimmedCharacters(12, 24), fields.characters(37, 30)};
}

DetailRecord parseDetail(const core::DatagramText &datagram)
{
    const Fields fields(datagram);
    DetailRecord record;
    record.Channel = fields.characters(23, 8);
    record.IncomingTime = fields.characters(31, 19);
    record.LineNo = fields.columns(50, 28);
    record.CallerID = fields.characters(78, 30);
    record.SimpleDes = fields.columns(113, 30);
    record.DetailDes = QString(fields.columnsFrom(144) + u"\r\n"_s).trimmed();
    return record;
}

QString callerNumberByCharacters(QStringView text)
{
    return withoutPadding(text.mid(77, 30)).toString();
}

QString GetTcpCmdPara(QStringView text, QLatin1StringView key)
{
    const qsizetype found = placeOf(key, text);
    if (found < 0) {
        return {};
    }
    const QStringView rest = text.sliced(found + key.size());
    const qsizetype end = rest.indexOf(u']');
    const QStringView block = end < 0 ? rest : rest.first(end);
    const qsizetype start = block.indexOf(u'[');
    return start < 0 ? QString() : core::withTonesOnLetters(block.sliced(start + 1).toString());
}

QString lastCallerText(const core::CallRecord &record, const QString &area)
{
    using core::shownText;
    // A record without a previous call has its parameter blocks in the same columns.
    const QStringView tail = record.Tail.startsWith(u'{') ? QStringView() : QStringView(record.Tail);
    return "   "_L1 % shownText(record.CallerID) % "     "_L1 % shownText(record.SimpleDes) % "     "_L1 %
           shownText(area) % "\r\n"_L1 % "last call time:"_L1 % shownText(tail.mid(0, 16)) % " ext:"_L1 %
           shownText(tail.mid(16, 8)) % " tel:"_L1 % shownText(tail.right(15));
}

QString describeDatagram(const core::DatagramText &datagram)
{
    switch (kindOf(datagram.text)) {
    case DatagramKind::ShortCid: {
        const ShortCidRecord record = parseShortCid(datagram);
        return described({{"CallerID"_L1, record.number}, {"SimpleDes"_L1, record.name}});
    }
    case DatagramKind::Detail: {
        const DetailRecord record = parseDetail(datagram);
        return described({{"Channel"_L1, record.Channel},
                          {"IncomingTime"_L1, record.IncomingTime},
                          {"LineNo"_L1, record.LineNo},
                          {"CallerID"_L1, record.CallerID},
                          {"SimpleDes"_L1, record.SimpleDes},
                          {"DetailDes"_L1, record.DetailDes}});
    }
    case DatagramKind::CallerId: {
        const core::CallRecord record = parseCallRecord(datagram);
        return described({{"CallerID"_L1, record.CallerID},
                          {"IncomingTime"_L1, record.IncomingTime},
                          {"Channel"_L1, record.Channel},
                          {"LineNo"_L1, record.LineNo},
                          {"SimpleDes"_L1, record.SimpleDes},
                          {"DetailDes"_L1, record.DetailDes},
                          {"ID"_L1, QString(record.Source + record.SnText)},
                          {"IfVIP"_L1, record.IfVIP},
                          {"IfInBlackList"_L1, record.IfInBlackList},
                          {"RawCid"_L1, record.RawCid},
                          {"Tail"_L1, record.Tail},
                          {"SenderIp"_L1, record.SenderIp}});
    }
    case DatagramKind::SmallMessage:
    case DatagramKind::ShutDown:
    case DatagramKind::ChannelStatus:
    case DatagramKind::Unknown:
        break;
    }
    return core::shownText(datagram.text);
}

} // namespace reception
