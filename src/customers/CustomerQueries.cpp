#include "customers/CustomerQueries.h"

#include "store/SqlTokens.h"

using namespace Qt::StringLiterals;

namespace customers {

namespace {

constexpr std::array<ExportField, exportFieldCount> fieldTable = {{
    {"CustomerName", "CustomerName"},
    {"CustomerID", "CustomerID"},
    {"ContactPersonName", "ContactPersonName"},
    {"WorkPhones", "PhoneNumbers"},
    {"City", "City"},
    {"CustomerType", "CustomerType"},
    {"CustomerBigType", "BasicCustomerType"},
    {"Address", "Address"},
    {"ContactPersonHomePhones", "HomePhone"},
    {"Fax", "Fax"},
    {"Webpage", "Webpage"},
    {"PayWay", "TypeOfPayment"},
    {"Credit", "Credit"},
    {"Note", "Note"},
    {"Broker", "SpecifiedSalesMan"},
    {"SN", "SN"},
    {"SeatID", "SeatID"},
    {"Province", "Province"},
    {"Country", "CountryOrArea"},
    {"PostalCode", "PostalCode"},
    {"ContactPersonTitle", "WorkTitle"},
    {"ContactPersonEmail", "Email"},
    {"ContactPersonMobile", "Mobile"},
    {"ContactPersonDepartment", "Department"},
    {"IFVIP", "IFVIP"},
    {"CustomerServiceID", "CustomerServiceID"},
    {"IfInBlackList", "IfInBlackList"},
}};

} // namespace

QString searchQuery(QStringView typed)
{
    static constexpr const char *pieces[] = {
        "Select * from customer where  [CustomerName] like '*",
        " or [WorkPhones] like '*",
        " or [ContactPersonName] like '*",
        " or [City] like '*",
        " or [Broker] like '*",
        " or [ContactPersonEmail] like '*",
        " or [CustomerType] like '*",
        " or [Note] like '*",
    };
    const QString words = store::quoted(typed.trimmed().toString());
    QString query;
    for (const char *piece : pieces) {
        query += QString::fromLatin1(piece) + words + u"*'"_s;
    }
    return query;
}

QString sortQuery(int column, const QString &rows)
{
    switch (column) {
    case 0:
        return rows + u" order by Customername"_s;
    case 1:
        return rows + u" order by CustomerID"_s;
    case 3:
        return rows + u" order by CustomerType"_s;
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
        fields += u'[' + QLatin1StringView(field.column) + "] as ["_L1 + QLatin1StringView(field.labelKey) +
                  "],"_L1;
    }
    fields.chop(1);
    return u"select "_s + first + fields + u" from customer"_s;
}

} // namespace customers
