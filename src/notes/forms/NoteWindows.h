#pragma once

#include "appearance/OneWindow.h"
#include "notes/forms/NoteContext.h"

#include <QHash>

namespace notes {

class frmNotePad;
class frmNotePadManager;

/// The windows of call notes, one of each.
class NoteWindows
{
public:
    explicit NoteWindows(const NoteContext &context);
    ~NoteWindows();
    Q_DISABLE_COPY_MOVE(NoteWindows)

    /// Opens the editor for one customer, whose notes so far it shows; an editor that is open gives way. Page
    /// 0 shows the notes so far, 1 a new note. False when the operator keeps the open one, and after an
    /// error.
    bool ShowNotePad(const QString &customerName, int page);
    /// Opens the manager, or brings it to the front.
    void showManager();
    /// Renames a customer in all call notes and in the open windows.
    bool RefreshNotePad(const QString &oldName, const QString &newName);
    /// Notes stand under other names on file, each told by the old one: what is open follows.
    void followNames(const QHash<QString, QString> &newNames);

private:
    frmNotePadManager *newManager();

    NoteContext m_context;
    appearance::OneWindow<frmNotePadManager> m_manager;
    appearance::OneWindow<frmNotePad> m_notePad;
};

} // namespace notes
