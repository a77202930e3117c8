#pragma once

#include "appearance/FormContext.h"
#include "appearance/OneWindow.h"
#include "lookup/ExistenceChecks.h"
#include "phonebook/forms/frmChoosePhoneDatabase.h"
#include "phonebook/forms/frmSimplePhoneBook.h"
#include "phonebook/forms/frmSimplePhoneBookEdit.h"

namespace phonebook {

/// Opens the windows of the phone book; there is one of each, which is brought to the front where it stands.
class PhoneBookWindows
{
public:
    struct Context
    {
        appearance::FormContext forms;
        const lookup::ExistenceChecks &checks;
        std::function<void(const PhoneBookEntry &entry)> entrySaved; ///< what it causes in other folders
    };

    explicit PhoneBookWindows(const Context &context);

    void showList() { m_list.get().bringToFront(); }
    /// The list on the rows of a query in the given words, behind the editor where there is one.
    void showList(const QString &query, QWidget *editor);
    /// Opens the editor on an entry; tells the operator where it is gone or cannot be read. False
    /// where the editor is not on it.
    bool editEntry(qint32 sn);
    /// Opens the editor for a new entry.
    void addEntry(const QString &number = {}, const QString &name = {});
    /// Opens the dialog that files an unknown caller here or among the customers.
    void addCaller(const QString &number, const QString &keyWord);

    /// Entries were imported; nothing while the list is closed.
    void entriesImported();

    /// Opens the editor on the entry that the list stands on, if it stands on one.
    void ShowaSimplePhoneBook();

private:
    frmSimplePhoneBook *newList();
    frmSimplePhoneBookEdit *newEditor();

    Context m_context;
    appearance::OneWindow<frmSimplePhoneBook> m_list;
    appearance::OneWindow<frmSimplePhoneBookEdit> m_editor;
    appearance::OneWindow<frmChoosePhoneDatabase> m_choice;
};

} // namespace phonebook
