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
    {"CustomerName"_L1, "txtCustomerName", "CustomerName"_L1, FieldKind::Name, 100},
    {"CustomerID"_L1, "txtCustomerID", "CustomerID"_L1, FieldKind::UpperText, 50},
    {"IfVIP"_L1, "chkYNVIP", "IFVIP"_L1, FieldKind::FlagLetter, 1},
    {"broker"_L1, "txtBroker", "Broker"_L1, FieldKind::Text, 50},
    {"city"_L1, "txtCity", "City"_L1, FieldKind::Text, 50},
    {"customertype"_L1, "txtCustomerType", "CustomerType"_L1, FieldKind::Text, 50},
    {"Address"_L1, "txtAddress", "Address"_L1, FieldKind::Text, 150},
    {"ContactPersonName"_L1, "txtLinkman", "ContactPersonName"_L1, FieldKind::Text, 50},
    {"WorkPhones"_L1, "txtCompanyCall", "PhoneNumbers"_L1, FieldKind::Text, 255},
    {"Fax"_L1, "txtCompanyFax", "Fax"_L1, FieldKind::Text, 100},
    {"ContactPersonEmail"_L1, "txtLinkmanEmail", "Email"_L1, FieldKind::Text, 100},
    {"PostalCode"_L1, "txtPostalCode", "PostalCode"_L1, FieldKind::Text, 20},
    {"ContactPersonMobile"_L1, "txtLinkmanMobile", "Mobile"_L1, FieldKind::Text, 100},
    {"WebPage"_L1, "txtHomepage", "WebPage"_L1, FieldKind::Text, 100},
    {"mainoperation"_L1, "txtMainOperation", "MainOperation"_L1, FieldKind::Text, 100},
    {"payway"_L1, "txtPayway", "TypeofPayment"_L1, FieldKind::Text, 30},
    {"credit"_L1, "txtCredit", "credit"_L1, FieldKind::Text, 30},
    {"quote"_L1, "txtQuote", "Quote"_L1, FieldKind::Text, 100},
    {"ContactPersonTitle"_L1, "txtLinkmanPosition", "WorkTitle"_L1, FieldKind::Text, 50},
    {"note"_L1, "txtRemark", "CustomerMemo"_L1, FieldKind::Text, 255},
    {"seatid"_L1, "cmbSeatID", "SpecifiedSeatID"_L1, FieldKind::Trimmed, 20},
    {"customerserviceid"_L1, "txtCustomerServiceID", "CustomerServiceID"_L1, FieldKind::Trimmed, 50},
    {"customerbigtype"_L1, "txtBigType", "BasicCustomerType"_L1, FieldKind::Trimmed, 50},
    {"Province"_L1, "txtProvince", "Province"_L1, FieldKind::Trimmed, 50},
    {"Country"_L1, "txtCountry", "CountryOrArea"_L1, FieldKind::Trimmed, 50},
    {"requiredproduct"_L1, "txtRequiredProduct", "RequiredProducts"_L1, FieldKind::Trimmed, 100},
    {"ifinblacklist"_L1, "chkIfInBlackList", "IfInBlackList"_L1, FieldKind::FlagNumber, 1},
    {"BlackListReason"_L1, "txtBlackListReason", "ListinBlackListReason"_L1, FieldKind::Trimmed, 100},
    {"ContactPersonSex"_L1, "txtContactPersonSex", "MaleFemale"_L1, FieldKind::Trimmed, 10},
    {"ContactPersonDepartment"_L1, "txtContactPersonDepartment", "Department"_L1, FieldKind::Trimmed, 50},
    {"ContactPersonHomePhones"_L1, "txtHomePhones", "HomePhone"_L1, FieldKind::Trimmed, 100},
    {"contactpersonadditionalemail"_L1, "txtAdditionalEmail", "OtherEmails"_L1, FieldKind::Trimmed, 100},
    {"ContactPersonMessenger"_L1, "txtContactPersonMessenger", "InstantMessager"_L1, FieldKind::Trimmed, 50},
    {"ContactPersonPager"_L1, "txtContactPersonPager", "Pager"_L1, FieldKind::Trimmed, 20},
    {"contactPersonNote"_L1, "txtContactPersonNote", "NoteforContactPerson"_L1, FieldKind::Trimmed, 100},
    {"othercontactPersonList"_L1, "txtOtherContactPersonList", "OtherContacts"_L1, FieldKind::Trimmed, 150},
    {"ShipmentRequirement"_L1, "txtShipmentRequirement", "DeliveryRquirement"_L1, FieldKind::Trimmed, 100},
    {"custom1"_L1, "txtCustom1", "SelfDefinedInfo1"_L1, FieldKind::Trimmed, 40},
    {"custom2"_L1, "txtCustom2", "SelfDefinedInfo2"_L1, FieldKind::Trimmed, 40},
    {"custom3"_L1, "txtCustom3", "SelfDefinedInfo3"_L1, FieldKind::Trimmed, 40},
    {"custom4"_L1, "txtCustom4", "SelfDefinedInfo4"_L1, FieldKind::Trimmed, 40},
    {"custom5"_L1, "txtCustom5", "SelfDefinedInfo5"_L1, FieldKind::Trimmed, 40},
    {"custom13"_L1, "txtCustom13", "SelfDefinedInfo6"_L1, FieldKind::Trimmed, 40},
    {"custom14"_L1, "txtCustom14", "SelfDefinedInfo7"_L1, FieldKind::Trimmed, 40},
    {"custom15"_L1, "txtCustom15", "SelfDefinedInfo8"_L1, FieldKind::Trimmed, 40},
    {"T1"_L1, "txtLinkman2", ""_L1, FieldKind::Trimmed, 50},
    {"T2"_L1, "txtLinkmanMobile2", ""_L1, FieldKind::Trimmed, 50},
    {"T3"_L1, "ChkPopTheCaller", ""_L1, FieldKind::PopUpFlag, 1},
}};

// Receivers count on the size of the record: if one text gets wider, another must get narrower.
static_assert(std::accumulate(fieldTable.begin(), fieldTable.end(),
                              int(sizeof(core::CustomerInfo::doNotSend)),
                              [](int sum, const CustomerField &field) { return sum + field.width; }) ==
              core::CustomerInfo::size);

constexpr QStringView flagLetters = u"NYG"; // at the check box's number

// Nothing says what a missing pop-up flag means until the repairs at the program's start write one. A guess
// made here would switch the pop-up on or off behind the operator's back.
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
        return column.compare(field.column, Qt::CaseInsensitive) == 0;
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
