#pragma once

#include "core/Navigator.h"
#include "core/TextLookup.h"
#include "lookup/ExistenceChecks.h"

#include <QLabel>
#include <QPushButton>

namespace lookup {

/// The line of an editor that says whose a typed name or number is already, with a button that opens him.
/// Neither is seen while it is nobody's.
class OwnerLine
{
public:
    /// All must outlive the line.
    OwnerLine(QLabel &label, QPushButton &button, const core::TextLookup &texts, core::Navigator &navigator);
    Q_DISABLE_COPY_MOVE(OwnerLine)

    void show(const std::optional<Owner> &owner);

private:
    QLabel &m_label;
    QPushButton &m_button;
    const core::TextLookup &m_texts;
    std::optional<Owner> m_owner;
};

} // namespace lookup
