#include "lookup/PopUpDecision.h"

#include "core/TextUtilities.h"

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

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

/// When the call came and what sets the caller apart, in words that are not taken for the call that rings.
QString earlierNotice(const PopupInfo &info, core::Standing standing, const core::TextLookup &texts)
{
    const QString notice = texts.Lms(u"EarlierCall"_s).replace("%1"_L1, info.time.toString(u"hh:mm"_s));
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

} // namespace

QString callerLine(const QString &number, const QString &name)
{
    return core::shownText(number + u"     "_s + name);
}

PopupInfo popupInfoOf(const core::CallRecord &record)
{
    return {.AboutFirst = record.CallerID,
            .time = QTime::fromString(record.IncomingTime.mid(11, 5), u"hh:mm"_s),
            .AboutSecond = record.SimpleDes,
            .Content = record.DetailDes,
            .SnText = record.SnText,
            .SnType = record.Source,
            .IfVIP = record.IfVIP,
            .IfInBlackList = record.IfInBlackList};
}

std::optional<PopUpView> decidePopUp(const PopupInfo &info, bool popupDetail, const core::TextLookup &texts)
{
    const core::Standing standing = core::standingOf(info.IfVIP, info.IfInBlackList);
    if (info.SnText.isEmpty() || info.AboutSecond.isEmpty() ||
        (standing == core::Standing::Ordinary && !popupDetail)) {
        return std::nullopt;
    }
    return PopUpView{.standing = standing,
                     .callerNumber = core::shownText(info.AboutFirst),
                     .callerName = core::shownText(info.AboutSecond),
                     .txtSN = info.SnText,
                     .txtSnType = info.SnType,
                     .txtAbout = callerLine(info.AboutFirst, info.AboutSecond),
                     .txtContent = core::shownText(info.Content),
                     .lblBlackListNotice = noticeFor(standing, texts),
                     .earlierNotice = earlierNotice(info, standing, texts)};
}

} // namespace lookup
