#pragma once

#include <QString>
#include <QVariant>

#include <array>
#include <optional>

namespace customers {

/// How a column holds what its control shows.
enum class FieldKind : quint8 {
    Name,       ///< text, trimmed, never empty
    UpperText,  ///< text, stored in capitals
    Text,       ///< text as it stands
    Trimmed,    ///< text without blanks around it
    FlagLetter, ///< check box: "N", "Y", or "G" for grey
    FlagNumber, ///< check box: its number, 0 where nothing is stored
    PopUpFlag   ///< check box: its number, which must be there
};

/// One column of `customer` that the editor holds. Everything that goes through a customer's fields goes
/// through this table, in this order: loading, saving, the forwarded record, headings.
struct CustomerField
{
    QLatin1StringView column;
    const char *control;        ///< of FrmEditCustomer
    QLatin1StringView labelKey; ///< the text key that names it; empty for three that have none
    FieldKind kind;
    int width; ///< bytes in the forwarded record
};

inline constexpr int customerFieldCount = 48;
using CustomerFieldTable = std::array<CustomerField, customerFieldCount>;
const CustomerFieldTable &customerFields();

/// Where a column stands in the table, whatever its letter case; throws core::Error for any other name.
qsizetype fieldOf(QStringView column);

/// Check boxes by number: 0 clear, 1 checked, 2 grey.
QString flagLetter(int checkValue, const QString &otherwise = QStringLiteral("N"));
/// Whatever the letter case; `otherwise` for any other text.
int flagValue(const QString &letter, int otherwise = 0);

/// What the controls show: texts, and the numbers of check boxes in digits.
using FieldTexts = std::array<QString, customerFieldCount>;

/// One customer as the editor shows it.
struct CustomerRecord
{
    std::optional<qint32> SN = {}; ///< none: not on file yet
    FieldTexts shown = {};

    const QString &text(QStringView column) const { return shown.at(static_cast<size_t>(fieldOf(column))); }
    bool operator==(const CustomerRecord &) const = default;
};

/// A column's value as a control shows it. Throws core::Error for a pop-up flag that is no number of a check
/// box.
QString shownValue(const CustomerField &field, const QVariant &stored);
/// What a control shows as its column stores it.
QVariant storedValue(const CustomerField &field, const QString &shown);

} // namespace customers
