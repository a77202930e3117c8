#include "lookup/CardDecision.h"

#include "core/TextUtilities.h"

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr qsizetype longestLine = 30; // that a unit tells

QString noticeFor(core::Standing standing, const core::TextLookup &texts)
{
    switch (standing) {
    case core::Standing::BlackListed:
        return texts.Lms(u"ListInBlackAttention"_s);
    case core::Standing::Vip:
        return texts.Lms(u"VIPattention"_s);
    case core::Standing::Ordinary:
        break;
    }
    return {};
}

// Says when the call came and what sets the caller apart, so that nobody takes it for the call that rings
// now.
QString earlierNotice(const PopupInfo &info, core::Standing standing, const core::TextLookup &texts)
{
    QString notice = texts.Lms(u"EarlierCall"_s).replace("%1"_L1, info.time.toString(u"hh:mm"_s));
    switch (standing) {
    case core::Standing::BlackListed:
        return notice + u" ("_s + texts.Lms(u"IfInBlackList"_s) + u')';
    case core::Standing::Vip:
        return notice + u" ("_s + texts.Lms(u"IFVIP"_s) + u')';
    case core::Standing::Ordinary:
        break;
    }
    return notice;
}

QString callOnLine(const PopupInfo &info, const core::TextLookup &texts)
{
    const QString time = info.time.toString(u"hh:mm"_s);
    const QString line = core::shownText(info.line, longestLine);
    return line.isEmpty()
               ? time
               : texts.Lms(u"CallOnLine"_s).replace("%1"_L1, time).replace("%2"_L1, core::isolated(line));
}

} // namespace

QString callerLine(const QString &number, const QString &name)
{
    return core::shownText(number + u"     "_s + name);
}

QString ageText(qint64 seconds, const core::TextLookup &texts)
{
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    if (seconds < minute) {
        return {};
    }
    return seconds < hour ? texts.Lms(u"MinutesAgo"_s).replace("%1"_L1, QString::number(seconds / minute))
                          : texts.Lms(u"HoursAgo"_s).replace("%1"_L1, QString::number(seconds / hour));
}

QString notesText(const QString &lastDate, int openRequests, const core::TextLookup &texts)
{
    if (lastDate.isEmpty()) {
        return texts.Lms(u"NoNotesOfCustomer"_s);
    }
    return texts.Lms(u"LastNote"_s).replace("%1"_L1, core::isolated(core::shownText(lastDate))) + u"    "_s +
           texts.Lms(u"OpenRequests"_s).replace("%1"_L1, QString::number(openRequests));
}

PopupInfo popupInfoOf(const core::CallRecord &record)
{
    return {.AboutFirst = record.CallerID,
            .time = QTime::fromString(record.IncomingTime.mid(11, 5), u"hh:mm"_s),
            .line = record.LineNo,
            .AboutSecond = record.SimpleDes,
            .Content = record.DetailDes,
            .SnText = record.SnText,
            .SnType = record.Source,
            .IfVIP = record.IfVIP,
            .IfInBlackList = record.IfInBlackList};
}

bool opensCard(const core::CallRecord &record, bool ordinaryToo)
{
    const bool ordinary = core::standingOf(record.IfVIP, record.IfInBlackList) == core::Standing::Ordinary;
    return !record.SnText.isEmpty() && !record.SimpleDes.isEmpty() && (ordinaryToo || !ordinary);
}

CardView cardViewOf(const PopupInfo &info, const core::TextLookup &texts)
{
    const core::Standing standing = core::standingOf(info.IfVIP, info.IfInBlackList);
    return CardView{.standing = standing,
                    .callerNumber = core::shownText(info.AboutFirst),
                    .callerName = core::shownText(info.AboutSecond),
                    .callOnLine = callOnLine(info, texts),
                    .caller = core::rowKeyOf(QString(info.SnType + info.SnText)),
                    .txtAbout = callerLine(info.AboutFirst, info.AboutSecond),
                    .txtContent = core::shownText(info.Content),
                    .lblBlackListNotice = noticeFor(standing, texts),
                    .earlierNotice = earlierNotice(info, standing, texts)};
}

} // namespace lookup
