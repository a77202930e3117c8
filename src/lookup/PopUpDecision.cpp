#include "lookup/PopUpDecision.h"

#include "core/TextUtilities.h"

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

// The marks are the sender's, compared as they stand: only a capital "Y" counts, and the black list wins over
// VIP.
Standing standingOf(const PopupInfo &info)
{
    if (info.IfInBlackList == "Y"_L1) {
        return Standing::BlackListed;
    }
    return info.IfVIP == "Y"_L1 ? Standing::Vip : Standing::Ordinary;
}

QString noticeFor(Standing standing, const core::TextLookup &texts)
{
    switch (standing) {
    case Standing::BlackListed:
        return texts.Lms(u"ListInBlackAttention"_s);
    case Standing::Vip:
        return texts.Lms(u"VIPattention"_s);
    case Standing::Ordinary:
        break;
    }
    return {};
}

} // namespace

PopupInfo popupInfoOf(const core::CallRecord &record)
{
    return {.AboutFirst = record.CallerID,
            .AboutSecond = record.SimpleDes,
            .Content = record.DetailDes,
            .SnText = record.SnText,
            .SnType = record.Source,
            .IfVIP = record.IfVIP,
            .IfInBlackList = record.IfInBlackList};
}

std::optional<PopUpView> decidePopUp(const PopupInfo &info, bool popupDetail, const core::TextLookup &texts)
{
    const Standing standing = standingOf(info);
    if (info.SnText.isEmpty() || info.AboutSecond.isEmpty() ||
        (standing == Standing::Ordinary && !popupDetail)) {
        return std::nullopt;
    }
    return PopUpView{.standing = standing,
                     .callerNumber = core::shownText(info.AboutFirst),
                     .callerName = core::shownText(info.AboutSecond),
                     .txtSN = info.SnText,
                     .txtSnType = info.SnType,
                     .txtAbout = core::shownText(info.AboutFirst + u"     "_s + info.AboutSecond),
                     .txtContent = core::shownText(info.Content),
                     .lblBlackListNotice = noticeFor(standing, texts)};
}

} // namespace lookup
