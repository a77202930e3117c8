#pragma once

#include "core/RunLog.h"

#include <QObject>
#include <QPointer>

#include <array>

namespace core {

/// The forms that are open: their count, and the first hundred of them by slot.
class OpenForms
{
public:
    static constexpr int slotCount = 100;

    explicit OpenForms(RunLog &log) : m_log(log) {}

    /// Counts the form as open and keeps it in the slot of the new count (1 to 100); beyond that it is only
    /// counted.
    void IncOpenedForm(QObject *form);
    void DecOpenedForm();

    int count() const { return m_count; }
    /// The form kept in a slot, null when none was or it is gone.
    QObject *form(int slot) const;

private:
    RunLog &m_log;
    qint16 m_count = 0;
    std::array<QPointer<QObject>, slotCount> m_forms;
};

} // namespace core
