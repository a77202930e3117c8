#include "notes/CallNotes.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace notes {

bool CallNotes::finds(const QString &select) const
{
    store::Database database(m_paths.CustomerFile);
    return !database.OpenRecordset(select).EOFile();
}

void CallNotes::execute(const QString &statement) const
{
    store::Database(m_paths.CustomerFile).Execute(statement);
}

/// The first thing wrong with the entry. The texts are the same in every language.
CallNotes::Complaint CallNotes::complaint(const NoteEntry &entry) const
{
    if (entry.customerName.isEmpty()) {
        return {WrongField::CustomerName, u"CustomerName can not be empty!"_s};
    }
    if (!finds(customerQuery(entry.customerName))) {
        return {WrongField::CustomerName, u"the customer is not exists!"_s};
    }
    if (entry.consultant.isEmpty()) {
        return {WrongField::Consultant, u"Consultant can not be empty!"_s};
    }
    if (entry.request.isEmpty()) {
        return {WrongField::Request, u"the request can not be empty!"_s};
    }
    return entry.response.isEmpty() ? Complaint{WrongField::Response, u"your response can not be empty!"_s}
                                    : Complaint{};
}

bool CallNotes::CheckValues(const NoteEntry &entry)
{
    Complaint wrong;
    const bool checked = m_log.trap("CheckValues"_L1, [&] { wrong = complaint(entry); });
    m_wrongField = wrong.field;
    if (!checked || m_wrongField != WrongField::None) {
        m_prompts.tell(checked ? wrong.text : m_texts.Lms(u"NoteNotSaved"_s), u"Check Values"_s);
    }
    return checked && m_wrongField == WrongField::None;
}

bool CallNotes::IfCallIDExists(const QString &callId)
{
    return m_log.trap("IfCallIDExists"_L1, false, [&] { return finds(callQuery(callId.trimmed())); });
}

bool CallNotes::AddNewCall(const NoteEntry &entry)
{
    return m_log.trap("AddNewCall"_L1, [&] { execute(callInsert(entry)); });
}

bool CallNotes::UpdateCall(const NoteEntry &entry)
{
    return m_log.trap("UpdateCall"_L1, [&] { execute(callUpdate(entry)); });
}

bool CallNotes::AddRR(const NoteEntry &entry)
{
    return m_log.trap("AddRR"_L1, [&] { execute(requestInsert(entry)); });
}

bool CallNotes::save(const NoteEntry &entry)
{
    const bool called = IfCallIDExists(entry.callId) ? UpdateCall(entry) : AddNewCall(entry);
    const bool saved = called && AddRR(entry);
    if (!saved) {
        m_prompts.tell(m_texts.Lms(u"NoteNotSaved"_s));
    }
    return saved;
}

bool CallNotes::RefreshNotePad(const QString &oldName, const QString &newName)
{
    return m_log.trap("RefreshNotePad"_L1, [&] {
        if (oldName != newName) {
            execute(customerRename(oldName, newName));
        }
    });
}

} // namespace notes
