#include "customers/CustomerQueries.h"

#include "store/SqlTokens.h"

using namespace Qt::StringLiterals;

namespace customers {

namespace {

constexpr std::array<ExportField, exportFieldCount> fieldTable = {{
    {"CustomerName"_L1, "CustomerName"_L1},
    {"CustomerID"_L1, "CustomerID"_L1},
    {"ContactPersonName"_L1, "ContactPersonName"_L1},
    {"WorkPhones"_L1, "PhoneNumbers"_L1},
    {"City"_L1, "City"_L1},
    {"CustomerType"_L1, "CustomerType"_L1},
    {"CustomerBigType"_L1, "BasicCustomerType"_L1},
    {"Address"_L1, "Address"_L1},
    {"ContactPersonHomePhones"_L1, "HomePhone"_L1},
    {"Fax"_L1, "Fax"_L1},
    {"Webpage"_L1, "Webpage"_L1},
    {"PayWay"_L1, "TypeOfPayment"_L1},
    {"Credit"_L1, "Credit"_L1},
    {"Note"_L1, "Note"_L1},
    {"Broker"_L1, "SpecifiedSalesMan"_L1},
    {"SN"_L1, "SN"_L1},
    {"SeatID"_L1, "SeatID"_L1},
    {"Province"_L1, "Province"_L1},
    {"Country"_L1, "CountryOrArea"_L1},
    {"PostalCode"_L1, "PostalCode"_L1},
    {"ContactPersonTitle"_L1, "WorkTitle"_L1},
    {"ContactPersonEmail"_L1, "Email"_L1},
    {"ContactPersonMobile"_L1, "Mobile"_L1},
    {"ContactPersonDepartment"_L1, "Department"_L1},
    {"IFVIP"_L1, "IFVIP"_L1},
    {"CustomerServiceID"_L1, "CustomerServiceID"_L1},
    {"IfInBlackList"_L1, "IfInBlackList"_L1},
}};

} // namespace

QString listQuery()
{
    return u"select * from customer order by CustomerName"_s;
}

QString refreshQuery()
{
    return u"select * from customer "_s;
}

QString searchQuery(QStringView typed)
{
    static constexpr QLatin1StringView pieces[] = {
        "Select * from customer where  [CustomerName] like '*"_L1,
        " or [WorkPhones] like '*"_L1,
        " or [ContactPersonName] like '*"_L1,
        " or [City] like '*"_L1,
        " or [Broker] like '*"_L1,
        " or [ContactPersonEmail] like '*"_L1,
        " or [CustomerType] like '*"_L1,
        " or [Note] like '*"_L1,
    };
    const QString words = store::quoted(typed.trimmed().toString());
    QString query;
    for (const QLatin1StringView piece : pieces) {
        query += piece + words + u"*'"_s;
    }
    return query;
}

QString sortQuery(int column, const QString &rows)
{
    switch (column) {
    case 0:
        return rows.trimmed() + u" order by Customername"_s;
    case 1:
        return rows.trimmed() + u" order by CustomerID"_s;
    case 3:
        return rows.trimmed() + u" order by CustomerType"_s;
    default:
        return {};
    }
}

const std::array<ExportField, exportFieldCount> &exportFields()
{
    return fieldTable;
}

QString exportQuery(const QList<int> &chosen, const QString &first)
{
    QString fields;
    for (const int place : chosen) {
        const ExportField &field = fieldTable.at(static_cast<size_t>(place));
        fields += u'[' + field.column + "] as ["_L1 + field.labelKey + "],"_L1;
    }
    fields.chop(1);
    return u"select "_s + first + fields + u" from customer"_s;
}

} // namespace customers
