#include "notes/forms/NoteWindows.h"

#include "appearance/BringToFront.h"
#include "notes/forms/frmNotePad.h"
#include "notes/forms/frmNotePadManager.h"

using namespace Qt::StringLiterals;

namespace notes {

NoteWindows::~NoteWindows()
{
    delete m_notePad;
    delete m_manager;
}

bool NoteWindows::ShowNotePad(const QString &customerName, int page)
{
    return m_context.forms.log.trap("ShowNotePad"_L1, false, [&] {
        if (m_context.values.NotePadOpen && m_notePad != nullptr) {
            if (!m_notePad->close()) {
                appearance::bringToFront(*m_notePad);
                return false;
            }
            delete m_notePad; // at once, so that the old one's end does not clear the new one's flag
        }
        m_notePad = new frmNotePad(m_context);
        m_notePad->begin(customerName.trimmed(), page);
        appearance::bringToFront(*m_notePad);
        return true;
    });
}

void NoteWindows::showManager()
{
    if (m_manager == nullptr) {
        m_manager = new frmNotePadManager(m_context, {});
        QObject::connect(m_manager, &frmNotePadManager::addNoteRequested, m_manager,
                         [this](const QString &customerName) { ShowNotePad(customerName, 1); });
    }
    appearance::bringToFront(*m_manager);
}

bool NoteWindows::RefreshNotePad(const QString &oldName, const QString &newName)
{
    const appearance::FormContext &forms = m_context.forms;
    const bool renamed = CallNotes(forms.log, forms.paths, forms.texts).RefreshNotePad(oldName, newName);
    if (renamed && oldName != newName) {
        if (m_notePad != nullptr) {
            m_notePad->followName(oldName, newName);
        }
        if (m_manager != nullptr) {
            m_manager->followName(oldName, newName);
        }
    }
    return renamed;
}

} // namespace notes
