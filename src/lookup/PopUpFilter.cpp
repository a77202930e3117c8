#include "lookup/PopUpFilter.h"

using namespace Qt::StringLiterals;

namespace lookup {

bool callerPopsUp(NumberIndex &numbers, const store::CustomerPopUpTable &flags, QStringView callerNumber)
{
    constexpr qint32 none = -1;
    const qint32 sn = numbers.FindCustomerSnOfCaller(callerNumber);
    const std::optional<QString> flag = sn == none ? std::nullopt : flags.T3(sn);
    return flag && flag->trimmed() != "0"_L1;
}

} // namespace lookup
