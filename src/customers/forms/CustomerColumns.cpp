#include "customers/forms/CustomerColumns.h"

#include "customers/CustomerFields.h"

#include <array>

using namespace Qt::StringLiterals;

namespace customers {

namespace {

// How wide the usual columns are at first, in characters.
constexpr std::array columnWidths{30, 14, 18, 16, 22, 28, 20, 28, 18};

// The columns that are shown before the operator chooses others; they stand in front.
QStringList usualFields()
{
    return {u"CustomerName"_s,        u"CustomerID"_s,        u"city"_s,
            u"customertype"_s,        u"ContactPersonName"_s, u"WorkPhones"_s,
            u"ContactPersonMobile"_s, u"Address"_s,           u"broker"_s};
}

} // namespace

// The table of fields has no keys for three columns; they are titled as in the editor.
void titleCustomerColumns(store::ResultModel &rows, const core::TextLookup &texts)
{
    rows.setLeadingFields(usualFields());
    const auto title = [&](const QString &field, const QString &key) {
        rows.setHeading(field, texts.Lms(key));
    };
    for (const CustomerField &field : customerFields()) {
        title(field.column, field.labelKey);
    }
    title(u"T1"_s, u"SecondContact"_s);
    title(u"T2"_s, u"SecondContactMobile"_s);
    title(u"T3"_s, u"PopTheCaller"_s);
    title(u"SN"_s, u"SN"_s);
}

void showUsualCustomerColumns(appearance::RecordGrid &grid)
{
    grid.setWidths(columnWidths);
    for (int column = int(usualFields().size()); column < grid.model()->columnCount(); ++column) {
        grid.setColumnHidden(column, true);
    }
}

} // namespace customers
