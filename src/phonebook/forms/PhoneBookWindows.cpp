#include "phonebook/forms/PhoneBookWindows.h"

#include "appearance/BringToFront.h"

using namespace Qt::StringLiterals;

namespace phonebook {

PhoneBookWindows::~PhoneBookWindows()
{
    delete m_choice;
    delete m_editor;
    delete m_list;
}

frmSimplePhoneBook &PhoneBookWindows::list()
{
    if (m_list == nullptr) {
        m_list = new frmSimplePhoneBook(m_context.forms);
        QObject::connect(m_list, &frmSimplePhoneBook::addAsked, m_list, [this] { addEntry(); });
        QObject::connect(m_list, &frmSimplePhoneBook::editAsked, m_list, [this] { ShowaSimplePhoneBook(); });
        QObject::connect(m_list, &frmSimplePhoneBook::entrySaved, m_list, m_context.entrySaved);
    }
    return *m_list;
}

frmSimplePhoneBookEdit &PhoneBookWindows::editor()
{
    if (m_editor == nullptr) {
        const auto entrySaved = [this](const PhoneBookEntry &entry) {
            if (m_list != nullptr) {
                m_list->followSaved(*entry.SN);
            }
            m_context.entrySaved(entry);
        };
        m_editor = new frmSimplePhoneBookEdit({m_context.forms, m_context.checks, entrySaved});
    }
    return *m_editor;
}

void PhoneBookWindows::showList()
{
    appearance::bringToFront(list());
}

void PhoneBookWindows::showList(const QString &query, QWidget *editor)
{
    list().showQuery(query);
    appearance::showBehind(list(), editor);
}

// Reads the row again: another desk may have changed it since the list was filled.
bool PhoneBookWindows::editEntry(qint32 sn)
{
    const appearance::FormContext &forms = m_context.forms;
    std::optional<PhoneBookEntry> entry;
    const bool wasRead =
        forms.log.trap("ShowaSimplePhoneBook"_L1, [&] { entry = entryBySn(forms.paths.PhoneBookFile, sn); });
    if (!entry) {
        forms.prompts.tell(wasRead ? forms.texts.Lms(u"EntryGone"_s)
                                   : troubleText(forms.texts, forms.paths.PhoneBookFile));
        return false;
    }
    const bool shown = editor().editEntry(*entry);
    appearance::bringToFront(editor());
    return shown;
}

void PhoneBookWindows::addEntry(const QString &number, const QString &name)
{
    editor().addEntry(number, name);
    appearance::bringToFront(editor());
}

void PhoneBookWindows::addCaller(const QString &number, const QString &keyWord)
{
    if (m_choice == nullptr) {
        m_choice = new frmChoosePhoneDatabase(
            m_context.forms, [this](const QString &filed, const QString &name) { addEntry(filed, name); });
    }
    m_choice->setCaller(number, keyWord);
    appearance::bringToFront(*m_choice);
}

void PhoneBookWindows::ShowaSimplePhoneBook()
{
    const std::optional<qint32> sn = m_list != nullptr ? m_list->currentSn() : std::nullopt;
    if (sn) {
        editEntry(*sn);
    }
}

} // namespace phonebook
