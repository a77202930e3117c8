#include "lookup/CustomerFacts.h"

#include "core/TextUtilities.h"

using namespace Qt::StringLiterals;

namespace lookup {

const QStringList &customerNumberColumns()
{
    static const QStringList columns = {u"WorkPhones"_s, u"ContactPersonMobile"_s, u"Fax"_s,
                                        u"ContactPersonHomePhones"_s};
    return columns;
}

CustomerFacts factsOf(const store::Recordset &customer)
{
    const auto text = [&customer](const QString &column) { return customer.value(column).toString(); };
    QStringList numbers;
    for (const QString &column : customerNumberColumns()) {
        numbers.append(text(column));
    }
    return {.numbers = numbers.join(u','),
            .name = text(u"CustomerName"_s),
            .note = text(u"note"_s),
            .vip = text(u"IfVIP"_s),
            .blackListed = core::leadingNumber(text(u"ifinblacklist"_s)) != 0,
            .popUpFlag = text(u"T3"_s)};
}

} // namespace lookup
