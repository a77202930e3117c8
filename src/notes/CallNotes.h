#pragma once

#include "core/Paths.h"
#include "core/RecordSave.h"
#include "core/RunLog.h"
#include "core/TextLookup.h"
#include "notes/NoteStatements.h"
#include "store/Database.h"

#include <optional>

namespace notes {

/// What became of an entry, and the call's row as it is after that.
struct SavedNote : core::Saved
{
    CallFields call = {};
};

/// Writes call notes. Each procedure logs an error under its name, and its result is then false.
class CallNotes
{
public:
    /// All of them must outlive the notes.
    CallNotes(core::RunLog &log, const core::Paths &paths, const core::TextLookup &texts)
        : m_log(log), m_paths(paths), m_texts(texts)
    {}

    /// What the save button does: writes the call, new or changed, and the entry. `loaded` is the call as the
    /// editor has saved it; none for one that it has not. Of a call on file only those fields are written
    /// that were typed, unless somebody else has changed them too; what he has changed besides, a renamed
    /// customer say, is taken over.
    SavedNote save(const std::optional<CallFields> &loaded, const NoteEntry &typed) const;
    /// What the operator decided of a save that could not be made, for the next one.
    static void decide(const core::Saved &refused, core::Whose holds, std::optional<CallFields> &loaded,
                       NoteEntry &typed);

    /// Renames a customer in all call notes.
    bool RefreshNotePad(const QString &oldName, const QString &newName) const;

private:
    SavedNote write(store::Database &database, const std::optional<CallFields> &loaded,
                    const NoteEntry &typed) const;
    static SavedNote refused(const QString &message, const QString &title = {}, const QString &field = {});
    std::optional<SavedNote> CheckValues(store::Database &database, const NoteEntry &entry) const;
    std::optional<CallFields> IfCallIDExists(store::Database &database, const QString &callId) const;
    bool AddNewCall(store::Database &database, const NoteEntry &entry) const;
    bool UpdateCall(store::Database &database, const NoteEntry &entry) const;
    bool AddRR(store::Database &database, const NoteEntry &entry) const;

    core::RunLog &m_log;
    const core::Paths &m_paths;
    const core::TextLookup &m_texts;
};

} // namespace notes
