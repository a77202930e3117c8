#pragma once

#include "ClosedDoors.h"

#include "customers/CustomerWindows.h"

#include "appearance/FormContext.h"
#include "core/QtClock.h"
#include "core/TextUtilities.h"
#include "lookup/NumberIndex.h"
#include "store/Upgrade.h"

#include <QTemporaryDir>

namespace bench {

/// A desk with customers of five scripts, its number index and its windows; follows a save as the program
/// does.
class CustomerDesk : public customers::CustomerEffects
{
public:
    explicit CustomerDesk(int customers);

    void refreshCustomerList() override { windows.refreshCustomerList(); }
    void SendTDRData(const core::CustomerInfo &) override {}
    void customerSaved(qint32 sn, const QString &, const QString &) override
    {
        store::FixSavedCustomer(log, paths, sn);
        index.updateCustomer(sn);
    }
    void customerDeleted(qint32 sn) override { index.updateCustomer(sn); }

    QTemporaryDir folder;
    core::Paths paths = core::pathsBelow(folder.path(), folder.path());
    core::QtClock clock;
    core::ProcessValues values;
    core::RunLog log{paths, clock, values};
    ClosedDoors doors;
    core::OpenForms openForms{log};
    core::WindowMemory windowMemory{paths, log};
    language::LanguageState language{QStringLiteral("ENG"), {}, {}, {}};
    language::FormTranslator translator{doors, language, log};
    appearance::FormContext context{paths, values, log,   doors, clock,
                                    doors, doors,  doors, doors, {translator, openForms, windowMemory}};
    core::CodePage codePage{936};
    lookup::NumberIndex index{paths, log, codePage};
    lookup::ExistenceChecks checks{{paths, log, index, doors, doors, doors}};
    customers::CustomerWindows windows{{context, checks, *this}};
};

} // namespace bench
