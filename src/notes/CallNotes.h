#pragma once

#include "core/Prompts.h"
#include "core/RunLog.h"
#include "notes/NoteStatements.h"

namespace notes {

/// The box of the editor that keeps an entry from being saved.
enum class WrongField { None, CustomerName, Consultant, Request, Response };

/// Writes call notes. Each procedure opens the customer database for itself and closes it again; an error
/// goes into the run log under the procedure's name, and its result is then false.
class CallNotes
{
public:
    /// All of them must outlive the notes.
    CallNotes(core::RunLog &log, const core::Paths &paths, core::Prompts &prompts,
              const core::TextLookup &texts)
        : m_log(log), m_paths(paths), m_prompts(prompts), m_texts(texts)
    {}

    /// True when the entry may be saved; else the operator was told what is wrong with it.
    bool CheckValues(const NoteEntry &entry);
    /// What the last CheckValues found wrong; none also where it could not read the customers.
    WrongField wrongField() const { return m_wrongField; }
    bool IfCallIDExists(const QString &callId);
    bool AddNewCall(const NoteEntry &entry);
    /// The date and time of the call stay as they are.
    bool UpdateCall(const NoteEntry &entry);
    /// Adds a request with its response to a call.
    bool AddRR(const NoteEntry &entry);
    /// Writes the call, new or changed, and the entry, which must have passed CheckValues. The operator is
    /// told when that fails.
    bool save(const NoteEntry &entry);
    /// Renames a customer in all call notes.
    bool RefreshNotePad(const QString &oldName, const QString &newName);

private:
    bool finds(const QString &select) const;
    void execute(const QString &statement) const;
    struct Complaint
    {
        WrongField field = WrongField::None;
        QString text;
    };
    Complaint complaint(const NoteEntry &entry) const;

    core::RunLog &m_log;
    const core::Paths &m_paths;
    core::Prompts &m_prompts;
    const core::TextLookup &m_texts;
    WrongField m_wrongField = WrongField::None;
};

} // namespace notes
