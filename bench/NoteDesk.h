#pragma once

#include "ClosedDoors.h"

#include "core/OpenForms.h"
#include "core/QtClock.h"
#include "notes/NoteContext.h"

#include <QTemporaryDir>

namespace bench {

/// A desk with 100,000 calls of 200,000 entries, 10,000 of them of one customer, and what its windows need.
class NoteDesk
{
public:
    static constexpr int calls = 100'000;

    NoteDesk();
    notes::NoteContext context();
    /// The customer with a twentieth of all entries.
    static QString busyCustomer();

    QTemporaryDir folder;
    core::Paths paths;
    core::QtClock clock;
    core::ProcessValues values;
    core::RunLog log{paths, clock, values};

private:
    ClosedDoors m_doors;
    core::OpenForms m_openForms{log};
    core::WindowMemory m_windows{paths, log};
    language::LanguageState m_language{QStringLiteral("ENG"), {}, {}, {}};
    language::FormTranslator m_translator{m_doors, m_language, log};
};

} // namespace bench
