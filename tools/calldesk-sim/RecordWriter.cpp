#include "RecordWriter.h"

#include "reception/Columns.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sim {

namespace {

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) { return character.unicode() < 0x80; });
}

// Never half a character: neither half of its bytes nor one of its two surrogates.
QStringView cutToColumns(QStringView text, qsizetype width, const CodePageChoice &codePage)
{
    QStringView kept = text.first(std::min(text.size(), width));
    while (!kept.isEmpty() && (kept.back().isHighSurrogate() || codePage.columns(kept) > width)) {
        kept.chop(1);
    }
    return kept;
}

QString padded(QStringView text, qsizetype characters)
{
    return text.first(std::min(text.size(), characters)).toString().leftJustified(characters);
}

// A record under construction, filled from left to right.
class RecordLine
{
public:
    explicit RecordLine(const CodePageChoice &codePage) : m_codePage(codePage) {}

    // The first column is 1.
    void put(qsizetype firstColumn, qsizetype width, QStringView text)
    {
        padTo(firstColumn);
        const QStringView kept = cutToColumns(text, width, m_codePage);
        append(kept);
        padTo(firstColumn + width);
    }
    void append(QStringView text)
    {
        m_bytes += m_codePage.encode(text);
        m_nextColumn += m_codePage.columns(text);
    }
    QByteArray bytes() const { return m_bytes; }

private:
    void padTo(qsizetype column)
    {
        m_bytes.append(std::max<qsizetype>(column - m_nextColumn, 0), ' ');
        m_nextColumn = std::max(m_nextColumn, column);
    }

    const CodePageChoice &m_codePage;
    QByteArray m_bytes;
    qsizetype m_nextColumn = 1;
};

// The columns that the caller-ID record and the detail record have in common.
void putCall(RecordLine &line, const CallFields &fields)
{
    line.put(23, 8, fields.channel);
    line.put(31, 19, fields.time);
    line.put(50, 28, fields.line);
    line.put(78, 30, fields.number);
    line.put(111, 1, u">");
    line.put(113, 30, fields.name);
}

void putTail(RecordLine &line, const CallFields &fields)
{
    if (fields.tailTime.isEmpty() && fields.tailExt.isEmpty() && fields.tailTel.isEmpty()) {
        return;
    }
    line.put(204, 16, fields.tailTime);
    line.put(220, 8, fields.tailExt);
    line.put(228, 15, fields.tailTel);
}

void appendBlocks(RecordLine &line, const CallFields &fields)
{
    if (fields.rawCid || fields.detail) {
        line.append(u"{RAWCID:["_s + fields.rawCid.value_or(QString()) + u"]}{DETAILDES:["_s +
                    fields.detail.value_or(QString()) + u"]}"_s);
    }
}

} // namespace

std::optional<CodePageChoice> CodePageChoice::named(QStringView name)
{
    if (name.compare("utf-8"_L1, Qt::CaseInsensitive) == 0) {
        return CodePageChoice();
    }
    const CodePageChoice choice(name.toInt());
    const bool known = choice.m_ansi->number() == name.toInt();
    return known ? std::optional(choice) : std::nullopt;
}

QByteArray CodePageChoice::encode(QStringView text) const
{
    return m_ansi && !isAscii(text) ? m_ansi->encode(text) : text.toUtf8();
}

QString CodePageChoice::decode(QByteArrayView bytes) const
{
    return m_ansi ? core::withTonesOnLetters(m_ansi->decode(bytes).text) : QString::fromUtf8(bytes);
}

qsizetype CodePageChoice::columns(QStringView text) const
{
    return m_ansi ? encode(text).size() : reception::ByteColumns(text);
}

QByteArray callRecord(const CallFields &fields, const CodePageChoice &codePage)
{
    RecordLine line(codePage);
    line.append(u"<CRMV1");
    putCall(line, fields);
    line.put(144, 10, fields.match);
    line.put(154, 30, fields.ip);
    line.put(184, 10, fields.blackList);
    line.put(194, 10, fields.vip);
    putTail(line, fields);
    appendBlocks(line, fields);
    return line.bytes();
}

QByteArray cidRecord(const CallFields &fields, const CodePageChoice &codePage)
{
    RecordLine line(codePage);
    line.append(u"<CID");
    line.put(12, 24, fields.number);
    line.put(37, 30, fields.name);
    return line.bytes();
}

QByteArray detailRecord(const CallFields &fields, const CodePageChoice &codePage)
{
    RecordLine line(codePage);
    line.append(u"<DETAILDES");
    putCall(line, fields);
    line.put(144, 0, u"");
    line.append(fields.detail.value_or(QString()) + u' '); // the last column of this record is never read
    return line.bytes();
}

QByteArray commandRecord(QStringView command, QStringView argument, const CodePageChoice &codePage)
{
    return codePage.encode(padded(command, 50).append(argument));
}

QByteArray messageRecord(QStringView sendTo, QStringView text, const CodePageChoice &codePage)
{
    const QString braced = (u"{{{"_s).append(text).append(u"}}}"_s);
    return commandRecord(u"SENDSMALLMESSAGE", padded(sendTo, 50) + QString(100, u' ') + braced, codePage);
}

} // namespace sim
