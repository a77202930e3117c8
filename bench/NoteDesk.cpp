#include "NoteDesk.h"

#include "DeskData.h"

#include "store/Upgrade.h"

using namespace Qt::StringLiterals;

namespace bench {

NoteDesk::NoteDesk() : paths(core::pathsBelow(folder.path(), folder.path()))
{
    makeCustomers(paths.CustomerFile, 5'000);
    store::UpdateDatabase_Customer_0606191111(log, paths);
    addCallNotes(paths.CustomerFile, calls);
}

notes::NoteContext NoteDesk::context()
{
    const appearance::FormContext forms{
        paths,   values,  log,     m_doors, clock,
        m_doors, m_doors, m_doors, m_doors, {m_translator, m_openForms, m_windows}};
    return {forms, m_doors, values, m_language};
}

QString NoteDesk::busyCustomer()
{
    return u"Harbour Trading 00000001"_s;
}

} // namespace bench
