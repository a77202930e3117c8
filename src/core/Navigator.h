#pragma once

#include "core/RowKey.h"

#include <QString>

class QWidget;

namespace core {

/// Windows that another folder than the asking one owns.
enum class Window {
    CallNotes,
    CustomerList,
    PhoneBook,
    Options,
    SendMessage,
    Copies,
    ImportCustomers,
    ImportPhoneBook
};

/// The door between windows: a form opens another folder's window through it and never by its class.
class Navigator
{
public:
    virtual ~Navigator() = default;
    /// False where this desk lacks the window (no customer database, say): its button is disabled.
    virtual bool canShow(Window window) const = 0;
    /// Opens the window, or brings it to the front.
    virtual void show(Window window) = 0;
    virtual void ShowHelp(const QString &helpId) = 0;
    /// Opens the editor of a known caller's row. False where the operator was told that it cannot be shown,
    /// or goes on with what he edits.
    virtual bool Show_Editor(RowKey caller) = 0;
    /// Opens the phone book, or the customer list, on the rows of a query in the given words; behind the
    /// editor that asks for it, which keeps the keyboard.
    virtual void showPhoneBook(const QString &query, QWidget *editor) = 0;
    virtual void showCustomerList(const QString &query, QWidget *editor) = 0;
    /// Opens the customer editor for a new customer with that number and name, and with a key word first the
    /// customer list on what it finds, so that the operator sees whether the caller is on file already.
    virtual void addCustomer(const QString &number, const QString &keyWord, const QString &name) = 0;
    /// Opens the customer editor on the first customer of that name.
    virtual void ShowCustomerByName(const QString &name) = 0;
    /// Opens the call notes editor for a customer, with the notes that were kept of him.
    virtual void ShowNotePad(const QString &customerName) = 0;
    /// Opens the call notes editor for the customer with that SN, with a new note; false as above.
    virtual bool addNote(qint32 customerSn) = 0;
    /// Opens the dialog that files an unknown caller; the key word is what the call says of him.
    virtual void addCaller(const QString &number, const QString &keyWord) = 0;
};

} // namespace core
