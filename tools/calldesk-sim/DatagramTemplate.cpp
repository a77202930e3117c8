#include "DatagramTemplate.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace sim {

namespace {

QString numbered(QString text, qint64 n)
{
    if (!text.contains(u"{n"_s)) {
        return text;
    }
    static const QRegularExpression mark(u"\\{n(?::([0-9]{1,2}))?\\}"_s);
    qsizetype from = 0;
    for (auto found = mark.match(text); found.hasMatch(); found = mark.match(text, from)) {
        const QString digits = QString::number(n).rightJustified(found.capturedView(1).toInt(), u'0');
        text.replace(found.capturedStart(), found.capturedLength(), digits);
        from = found.capturedStart() + digits.size();
    }
    return text;
}

CallFields numbered(CallFields fields, qint64 n)
{
    for (QString *text :
         {&fields.channel, &fields.time, &fields.line, &fields.number, &fields.name, &fields.match,
          &fields.ip, &fields.blackList, &fields.vip, &fields.tailTime, &fields.tailExt, &fields.tailTel}) {
        *text = numbered(std::move(*text), n);
    }
    for (std::optional<QString> *block : {&fields.rawCid, &fields.detail}) {
        if (*block) {
            *block = numbered(std::move(**block), n);
        }
    }
    return fields;
}

std::optional<char> byteOf(QStringView twoDigits)
{
    bool isHex = false;
    const int value = twoDigits.toInt(&isHex, 16);
    return isHex && twoDigits.size() == 2 ? std::optional(static_cast<char>(value)) : std::nullopt;
}

std::optional<char> simpleEscape(QChar letter)
{
    switch (letter.unicode()) {
    case u'r':
        return '\r';
    case u'n':
        return '\n';
    case u't':
        return '\t';
    case u'\\':
        return '\\';
    default:
        return std::nullopt;
    }
}

} // namespace

QByteArray makeDatagram(const DatagramTemplate &wanted, qint64 n, const QDateTime &now)
{
    using Kind = DatagramTemplate::Kind;
    CallFields fields = numbered(wanted.fields, n);
    if (wanted.timeIsNow) {
        fields.time = now.toString(u"yyyy-MM-dd HH:mm:ss");
    }
    const QString text = numbered(wanted.text, n);
    switch (wanted.kind) {
    case Kind::Call:
        return callRecord(fields, wanted.codePage);
    case Kind::Cid:
        return cidRecord(fields, wanted.codePage);
    case Kind::Detail:
        return detailRecord(fields, wanted.codePage);
    case Kind::Message:
        return messageRecord(numbered(wanted.sendTo, n), text, wanted.codePage);
    case Kind::ShutDown:
        return commandRecord(u"SHUTDOWNALL", u"", wanted.codePage);
    case Kind::ChannelStatus:
        return commandRecord(u"CHANNELSTATUS", text, wanted.codePage);
    case Kind::Text:
        return rawText(text, wanted.codePage);
    case Kind::None:
        break;
    }
    return QByteArray();
}

QByteArray rawText(QStringView text, const CodePageChoice &codePage)
{
    QByteArray bytes;
    for (qsizetype backslash = text.indexOf(u'\\'); backslash >= 0; backslash = text.indexOf(u'\\')) {
        bytes += codePage.encode(text.first(backslash));
        text = text.sliced(backslash + 1);
        const std::optional<char> simple = text.isEmpty() ? std::nullopt : simpleEscape(text.front());
        const bool isHex = text.startsWith(u'x') && text.size() >= 3;
        const std::optional<char> byte = isHex ? byteOf(text.sliced(1, 2)) : simple;
        bytes += byte.value_or('\\'); // an unknown escape is meant as it stands
        text = byte ? text.sliced(isHex ? 3 : 1) : text;
    }
    return bytes + codePage.encode(text);
}

} // namespace sim
