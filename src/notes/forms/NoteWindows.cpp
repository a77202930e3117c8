#include "notes/forms/NoteWindows.h"

#include "notes/forms/frmNotePad.h"
#include "notes/forms/frmNotePadManager.h"

using namespace Qt::StringLiterals;

namespace notes {

NoteWindows::NoteWindows(const NoteContext &context)
    : m_context(context), m_manager([this] { return newManager(); }),
      m_notePad([this] { return new frmNotePad(m_context); })
{}

NoteWindows::~NoteWindows() = default;

frmNotePadManager *NoteWindows::newManager()
{
    auto *manager = new frmNotePadManager(m_context, {});
    QObject::connect(manager, &frmNotePadManager::addNoteRequested, manager,
                     [this](const QString &customerName) { ShowNotePad(customerName, 1); });
    return manager;
}

bool NoteWindows::ShowNotePad(const QString &customerName, int page)
{
    return m_context.forms.log.trap("ShowNotePad"_L1, false, [&] {
        if (frmNotePad *open = m_notePad.ifOpen(); open != nullptr && !open->close()) {
            open->bringToFront();
            return false;
        }
        m_notePad.get().begin(customerName.trimmed(), page);
        m_notePad.get().bringToFront();
        return true;
    });
}

void NoteWindows::showManager()
{
    m_manager.get().bringToFront();
}

bool NoteWindows::RefreshNotePad(const QString &oldName, const QString &newName)
{
    const appearance::FormContext &forms = m_context.forms;
    const bool renamed = CallNotes(forms.log, forms.paths, forms.texts).RefreshNotePad(oldName, newName);
    if (renamed && oldName != newName) {
        followNames({{oldName, newName}});
    }
    return renamed;
}

void NoteWindows::followNames(const QHash<QString, QString> &newNames)
{
    if (frmNotePad *notePad = m_notePad.ifOpen()) {
        notePad->followNames(newNames);
    }
    if (frmNotePadManager *manager = m_manager.ifOpen()) {
        manager->followNames(newNames);
    }
}

} // namespace notes
