#include "phonebook/forms/PhoneBookWindows.h"

using namespace Qt::StringLiterals;

namespace phonebook {

PhoneBookWindows::PhoneBookWindows(const Context &context)
    : m_context(context), m_list([this] { return newList(); }), m_editor([this] { return newEditor(); }),
      m_choice([this] {
          return new frmChoosePhoneDatabase(
              m_context.forms,
              [this](const QString &number, const QString &name) { addEntry(number, name); });
      })
{}

frmSimplePhoneBook *PhoneBookWindows::newList()
{
    auto *list = new frmSimplePhoneBook(m_context.forms);
    QObject::connect(list, &frmSimplePhoneBook::addAsked, list, [this] { addEntry(); });
    QObject::connect(list, &frmSimplePhoneBook::editAsked, list, [this] { ShowaSimplePhoneBook(); });
    QObject::connect(list, &frmSimplePhoneBook::entrySaved, list, m_context.entrySaved);
    return list;
}

frmSimplePhoneBookEdit *PhoneBookWindows::newEditor()
{
    const auto entrySaved = [this](const PhoneBookEntry &entry) {
        if (frmSimplePhoneBook *list = m_list.ifOpen()) {
            list->followSaved(*entry.SN);
        }
        m_context.entrySaved(entry);
    };
    return new frmSimplePhoneBookEdit({m_context.forms, m_context.checks, entrySaved});
}

void PhoneBookWindows::showList(const QString &query, QWidget *editor)
{
    m_list.get().showQuery(query);
    m_list.get().showBehind(editor);
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
    const bool shown = m_editor.get().editEntry(*entry);
    m_editor.get().bringToFront();
    return shown;
}

void PhoneBookWindows::addEntry(const QString &number, const QString &name)
{
    m_editor.get().addEntry(number, name);
    m_editor.get().bringToFront();
}

void PhoneBookWindows::addCaller(const QString &number, const QString &keyWord)
{
    m_choice.get().setCaller(number, keyWord);
    m_choice.get().bringToFront();
}

void PhoneBookWindows::entriesImported()
{
    if (frmSimplePhoneBook *list = m_list.ifOpen()) {
        list->followImported();
    }
}

void PhoneBookWindows::ShowaSimplePhoneBook()
{
    const frmSimplePhoneBook *list = m_list.ifOpen();
    const std::optional<qint32> sn = list != nullptr ? list->currentSn() : std::nullopt;
    if (sn) {
        editEntry(*sn);
    }
}

} // namespace phonebook
