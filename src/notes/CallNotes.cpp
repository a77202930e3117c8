#include "notes/CallNotes.h"

#include "core/TextUtilities.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace notes {

namespace {

// Thrown to leave a transaction with nothing written.
struct NothingWritten
{};

// The columns that are written, and where they stand in the editor.
struct CallColumn
{
    QLatin1StringView name;
    QString CallFields::*field;
    QString NoteEntry::*typed;
};
constexpr std::array callColumns{
    CallColumn{"CustomerName"_L1, &CallFields::customerName, &NoteEntry::customerName},
    CallColumn{"Consultant"_L1, &CallFields::consultant, &NoteEntry::consultant},
    CallColumn{"CallContent"_L1, &CallFields::content, &NoteEntry::content},
};

QList<core::FieldEdit> editsOf(const CallFields &loaded, const NoteEntry &typed, const CallFields &onFile)
{
    QList<core::FieldEdit> edits;
    for (const CallColumn &column : callColumns) {
        edits.append({.column = column.name,
                      .read = loaded.*column.field,
                      .shown = loaded.*column.field,
                      .wanted = typed.*column.typed,
                      .onFile = onFile.*column.field});
    }
    return edits;
}

} // namespace

SavedNote CallNotes::refused(const QString &message, const QString &title, const QString &field)
{
    SavedNote saved;
    saved.wrongField = field;
    saved.message = message;
    saved.title = title;
    return saved;
}

// The first thing wrong with the entry. The texts are the same in every language.
std::optional<SavedNote> CallNotes::CheckValues(store::Database &database, const NoteEntry &entry) const
{
    const auto wrong = [](const QString &text, const QString &field) {
        return refused(text, u"Check Values"_s, field);
    };
    const auto unread = refused(m_texts.Lms(u"NoteNotSaved"_s), u"Check Values"_s);
    return m_log.trap("CheckValues"_L1, std::optional(unread), [&]() -> std::optional<SavedNote> {
        if (entry.customerName.isEmpty()) {
            return wrong(u"CustomerName can not be empty!"_s, u"CustomerName"_s);
        }
        if (database.OpenRecordset(customerQuery(entry.customerName)).EOFile()) {
            return wrong(u"the customer is not exists!"_s, u"CustomerName"_s);
        }
        if (entry.consultant.isEmpty()) {
            return wrong(u"Consultant can not be empty!"_s, u"Consultant"_s);
        }
        if (entry.request.isEmpty()) {
            return wrong(u"the request can not be empty!"_s, u"Request"_s);
        }
        return entry.response.isEmpty()
                   ? std::optional(wrong(u"your response can not be empty!"_s, u"Response"_s))
                   : std::nullopt;
    });
}

std::optional<CallFields> CallNotes::IfCallIDExists(store::Database &database, const QString &callId) const
{
    std::optional<CallFields> call;
    m_log.trap("IfCallIDExists"_L1, [&] {
        const store::Recordset found = database.OpenRecordset(callQuery(callId.trimmed()));
        if (!found.EOFile()) {
            call.emplace();
            for (const CallColumn &column : callColumns) {
                (*call).*column.field = core::NullToEmpty(found.value(column.name)).toString();
            }
        }
    });
    return call;
}

bool CallNotes::AddNewCall(store::Database &database, const NoteEntry &entry) const
{
    return m_log.trap("AddNewCall"_L1, [&] { database.Execute(callInsert(entry)); });
}

// The date and time of the call stay as they are.
bool CallNotes::UpdateCall(store::Database &database, const NoteEntry &entry) const
{
    return m_log.trap("UpdateCall"_L1, [&] { database.Execute(callUpdate(entry)); });
}

// Adds a request with its response to a call.
bool CallNotes::AddRR(store::Database &database, const NoteEntry &entry) const
{
    return m_log.trap("AddRR"_L1, [&] { database.Execute(requestInsert(entry)); });
}

// Reads the call again under the same lock that it writes under, so that no other desk comes in between.
SavedNote CallNotes::write(store::Database &database, const std::optional<CallFields> &loaded,
                           const NoteEntry &typed) const
{
    NoteEntry entry = typed;
    SavedNote saved;
    const std::optional<CallFields> onFile = IfCallIDExists(database, typed.callId);
    saved.gone = loaded && !onFile;
    const QList<core::FieldEdit> edits =
        onFile ? editsOf(loaded.value_or(CallFields()), typed, *onFile) : QList<core::FieldEdit>();
    saved.disputed = core::disputed(edits);
    if (saved.gone || !saved.disputed.isEmpty()) {
        return saved;
    }
    for (qsizetype place = 0; place < edits.size(); ++place) {
        if (edits.at(place).isTakenOver()) {
            entry.*callColumns.at(static_cast<size_t>(place)).typed = edits.at(place).onFile.toString();
        }
    }
    if (const std::optional<SavedNote> wrong = CheckValues(database, entry)) {
        return *wrong;
    }
    const bool called = onFile ? UpdateCall(database, entry) : AddNewCall(database, entry);
    if (!called || !AddRR(database, entry)) {
        return refused(m_texts.Lms(u"NoteNotSaved"_s));
    }
    for (const CallColumn &column : callColumns) {
        saved.call.*column.field = entry.*column.typed;
    }
    saved.written = true;
    return saved;
}

SavedNote CallNotes::save(const std::optional<CallFields> &loaded, const NoteEntry &typed) const
{
    SavedNote saved;
    const bool succeeded = m_log.trap(loaded ? "UpdateCall"_L1 : "AddNewCall"_L1, [&] {
        store::Database database(m_paths.CustomerFile);
        try {
            database.transaction([&] {
                saved = write(database, loaded, typed);
                if (!saved.written) {
                    throw NothingWritten();
                }
            });
        } catch (const NothingWritten &) { // what stood in the way is told
        }
    });
    return succeeded ? saved
                     : refused(store::notWrittenText(m_texts, u"NoteNotSaved"_s, m_paths.CustomerFile));
}

void CallNotes::decide(const core::Saved &refused, core::Whose holds, std::optional<CallFields> &loaded,
                       NoteEntry &typed)
{
    if (refused.gone) {
        loaded.reset(); // the call is written anew
        return;
    }
    CallFields known = loaded.value_or(CallFields());
    for (const core::FieldEdit &edit : refused.disputed) {
        const auto *const column = std::ranges::find(callColumns, edit.column, &CallColumn::name);
        known.*column->field = edit.onFile.toString();
        if (holds == core::Whose::Theirs) {
            typed.*column->typed = edit.onFile.toString();
        }
    }
    loaded = known;
}

bool CallNotes::RefreshNotePad(const QString &oldName, const QString &newName) const
{
    return m_log.trap("RefreshNotePad"_L1, [&] {
        if (oldName != newName) {
            store::Database database(m_paths.CustomerFile);
            database.transaction([&] { database.Execute(customerRename(oldName, newName)); });
        }
    });
}

} // namespace notes
