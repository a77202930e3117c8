#pragma once

#include "customers/CustomerFields.h"

#include <QWidget>

#include <functional>

namespace customers {

/// The form's 48 controls by the names in the table of fields, as one value.
class CustomerControlSet
{
public:
    CustomerControlSet() = default;
    /// The form must hold every one of them, and outlive the set.
    explicit CustomerControlSet(const QWidget &form);

    const std::array<QWidget *, customerFieldCount> &all() const { return m_controls; }
    FieldTexts texts() const;
    void setTexts(const FieldTexts &texts);
    /// Sets those alone that differ, so that cursors and what can be undone stay elsewhere.
    void followTexts(const FieldTexts &texts);
    /// Calls back, as long as `receiver` lives, when the operator or the program changes a control.
    void onChanged(QObject &receiver, const std::function<void()> &changed) const;

private:
    std::array<QWidget *, customerFieldCount> m_controls{};
};

} // namespace customers
