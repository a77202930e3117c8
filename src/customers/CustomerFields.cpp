#include "customers/CustomerFields.h"

#include "core/CustomerInfo.h"
#include "core/Error.h"
#include "core/TextUtilities.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace customers {

namespace {

constexpr CustomerFieldTable fieldTable = {{
    {"CustomerName", "txtCustomerName", "CustomerName", FieldKind::Name, 100},
    {"CustomerID", "txtCustomerID", "CustomerID", FieldKind::UpperText, 50},
    {"IfVIP", "chkYNVIP", "IFVIP", FieldKind::FlagLetter, 1},
    {"broker", "txtBroker", "Broker", FieldKind::Text, 50},
    {"city", "txtCity", "City", FieldKind::Text, 50},
    {"customertype", "txtCustomerType", "CustomerType", FieldKind::Text, 50},
    {"Address", "txtAddress", "Address", FieldKind::Text, 150},
    {"ContactPersonName", "txtLinkman", "ContactPersonName", FieldKind::Text, 50},
    {"WorkPhones", "txtCompanyCall", "PhoneNumbers", FieldKind::Text, 255},
    {"Fax", "txtCompanyFax", "Fax", FieldKind::Text, 100},
    {"ContactPersonEmail", "txtLinkmanEmail", "Email", FieldKind::Text, 100},
    {"PostalCode", "txtPostalCode", "PostalCode", FieldKind::Text, 20},
    {"ContactPersonMobile", "txtLinkmanMobile", "Mobile", FieldKind::Text, 100},
    {"WebPage", "txtHomepage", "WebPage", FieldKind::Text, 100},
    {"mainoperation", "txtMainOperation", "MainOperation", FieldKind::Text, 100},
    {"payway", "txtPayway", "TypeofPayment", FieldKind::Text, 30},
    {"credit", "txtCredit", "credit", FieldKind::Text, 30},
    {"quote", "txtQuote", "Quote", FieldKind::Text, 100},
    {"ContactPersonTitle", "txtLinkmanPosition", "WorkTitle", FieldKind::Text, 50},
    {"note", "txtRemark", "CustomerMemo", FieldKind::Text, 255},
    {"seatid", "cmbSeatID", "SpecifiedSeatID", FieldKind::Trimmed, 20},
    {"customerserviceid", "txtCustomerServiceID", "CustomerServiceID", FieldKind::Trimmed, 50},
    {"customerbigtype", "txtBigType", "BasicCustomerType", FieldKind::Trimmed, 50},
    {"Province", "txtProvince", "Province", FieldKind::Trimmed, 50},
    {"Country", "txtCountry", "CountryOrArea", FieldKind::Trimmed, 50},
    {"requiredproduct", "txtRequiredProduct", "RequiredProducts", FieldKind::Trimmed, 100},
    {"ifinblacklist", "chkIfInBlackList", "IfInBlackList", FieldKind::FlagNumber, 1},
    {"BlackListReason", "txtBlackListReason", "ListinBlackListReason", FieldKind::Trimmed, 100},
    {"ContactPersonSex", "txtContactPersonSex", "MaleFemale", FieldKind::Trimmed, 10},
    {"ContactPersonDepartment", "txtContactPersonDepartment", "Department", FieldKind::Trimmed, 50},
    {"ContactPersonHomePhones", "txtHomePhones", "HomePhone", FieldKind::Trimmed, 100},
    {"contactpersonadditionalemail", "txtAdditionalEmail", "OtherEmails", FieldKind::Trimmed, 100},
    {"ContactPersonMessenger", "txtContactPersonMessenger", "InstantMessager", FieldKind::Trimmed, 50},
    {"ContactPersonPager", "txtContactPersonPager", "Pager", FieldKind::Trimmed, 20},
    {"contactPersonNote", "txtContactPersonNote", "NoteforContactPerson", FieldKind::Trimmed, 100},
    {"othercontactPersonList", "txtOtherContactPersonList", "OtherContacts", FieldKind::Trimmed, 150},
    {"ShipmentRequirement", "txtShipmentRequirement", "DeliveryRquirement", FieldKind::Trimmed, 100},
    {"custom1", "txtCustom1", "SelfDefinedInfo1", FieldKind::Trimmed, 40},
    {"custom2", "txtCustom2", "SelfDefinedInfo2", FieldKind::Trimmed, 40},
    {"custom3", "txtCustom3", "SelfDefinedInfo3", FieldKind::Trimmed, 40},
    {"custom4", "txtCustom4", "SelfDefinedInfo4", FieldKind::Trimmed, 40},
    {"custom5", "txtCustom5", "SelfDefinedInfo5", FieldKind::Trimmed, 40},
    {"custom13", "txtCustom13", "SelfDefinedInfo6", FieldKind::Trimmed, 40},
    {"custom14", "txtCustom14", "SelfDefinedInfo7", FieldKind::Trimmed, 40},
    {"custom15", "txtCustom15", "SelfDefinedInfo8", FieldKind::Trimmed, 40},
    {"T1", "txtLinkman2", "", FieldKind::Trimmed, 50},
    {"T2", "txtLinkmanMobile2", "", FieldKind::Trimmed, 50},
    {"T3", "ChkPopTheCaller", "", FieldKind::PopUpFlag, 1},
}};

// Receivers count on the size: what one text gains in width, another must give.
static_assert(std::accumulate(fieldTable.begin(), fieldTable.end(),
                              int(sizeof(core::CustomerInfo::doNotSend)),
                              [](int sum, const CustomerField &field) { return sum + field.width; }) ==
              core::CustomerInfo::size);

constexpr QStringView flagLetters = u"NYG"; // at the check box's number

// A pop-up flag has no rule for a missing one: what it would stand for is settled when the program repairs
// the rows at its start, and guessing it here would switch a customer's popup on or off behind the operator's
// back.
int popUpFlag(const QVariant &stored)
{
    constexpr int invalidNull = 94;
    constexpr int typeMismatch = 13;
    bool isNumber = false;
    const int value = stored.toString().trimmed().toInt(&isNumber);
    if (!isNumber) {
        throw stored.isNull() ? core::Error(invalidNull, u"T3 is Null"_s)
                              : core::Error(typeMismatch, u"T3 is no number"_s);
    }
    return value;
}

} // namespace

const CustomerFieldTable &customerFields()
{
    return fieldTable;
}

qsizetype fieldOf(QStringView column)
{
    const auto *const found = std::ranges::find_if(fieldTable, [&](const CustomerField &field) {
        return column.compare(QLatin1StringView(field.column), Qt::CaseInsensitive) == 0;
    });
    if (found == fieldTable.end()) {
        throw core::Error(0, u"no such field of a customer: "_s + column.toString());
    }
    return found - fieldTable.begin();
}

QString flagLetter(int checkValue, const QString &otherwise)
{
    const bool known = checkValue >= 0 && checkValue < flagLetters.size();
    return known ? QString(flagLetters[checkValue]) : otherwise;
}

int flagValue(const QString &letter, int otherwise)
{
    const QString upper = letter.toUpper();
    const qsizetype value = upper.size() == 1 ? flagLetters.indexOf(upper.front()) : -1;
    return value >= 0 ? static_cast<int>(value) : otherwise;
}

QString shownValue(const CustomerField &field, const QVariant &stored)
{
    switch (field.kind) {
    case FieldKind::FlagLetter:
        return QString::number(flagValue(core::NullToEmpty(stored).toString()));
    case FieldKind::FlagNumber:
        return QString::number(core::leadingNumber(core::NullToZero(stored).toString()));
    case FieldKind::PopUpFlag:
        return QString::number(popUpFlag(stored));
    default:
        return core::NullToEmpty(stored).toString();
    }
}

QVariant storedValue(const CustomerField &field, const QString &shown)
{
    switch (field.kind) {
    case FieldKind::UpperText:
        return shown.toUpper();
    case FieldKind::Name:
    case FieldKind::Trimmed:
        return shown.trimmed();
    case FieldKind::FlagLetter:
        return flagLetter(shown.toInt());
    case FieldKind::FlagNumber:
        return shown.toInt();
    default:
        return shown;
    }
}

} // namespace customers
