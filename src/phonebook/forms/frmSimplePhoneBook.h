#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "appearance/SearchedList.h"
#include "phonebook/DataPhonebook.h"

#include <memory>

namespace Ui {
class frmSimplePhoneBook;
}

namespace phonebook {

/// The list of the simple phone book. Deletes itself when closed.
class frmSimplePhoneBook : public appearance::Form
{
    Q_OBJECT

public:
    explicit frmSimplePhoneBook(const appearance::FormContext &context);
    ~frmSimplePhoneBook() override;

    /// After an entry was saved: shows what is searched for, or else all, anew, and stands on it.
    void followSaved(qint32 sn);
    /// After entries were imported: the same, and stands where it stood.
    void followImported();
    /// Shows the entries of a query in the given words.
    void showQuery(const QString &query);

    /// The SN of the entry that the list stands on; empty without one.
    std::optional<qint32> currentSn() const { return m_list->currentSn(); }

Q_SIGNALS:
    void addAsked();
    void editAsked();
    /// In the list itself, or put back there.
    void entrySaved(const phonebook::PhoneBookEntry &entry);

private:
    enum class DeletedBy { Button, Grid };

    void setUpList();
    void connectControls();
    void connectGrid();
    void layOutColumns();
    void showAnswer(bool whole);
    void deleteSelected(DeletedBy means);
    void tellOfDeleted(int rows, bool whole);
    void tellOfRestored(qint32 sn);
    void showReadingTrouble();
    void showWritingTrouble();
    void settle(const QPersistentModelIndex &cell, PhoneBookEntry loaded, const QString &typed);
    void editAgain(const QPersistentModelIndex &cell, const QString &typed);
    void notice(const QString &text);

    appearance::FormContext m_context;
    std::unique_ptr<Ui::frmSimplePhoneBook> m_ui;
    DataPhonebook *m_data; ///< a child
    std::optional<appearance::SearchedList> m_list;
    DeletedBy m_deletedBy = DeletedBy::Button; ///< what is being deleted
};

} // namespace phonebook
