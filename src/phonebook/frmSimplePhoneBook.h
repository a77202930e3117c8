#pragma once

#include "appearance/FormContext.h"
#include "appearance/SearchWhileTyping.h"
#include "phonebook/DataPhonebook.h"

#include <QWidget>

#include <memory>

namespace Ui {
class frmSimplePhoneBook;
}

namespace phonebook {

/// The list of the simple phone book. Deletes itself when closed.
class frmSimplePhoneBook : public QWidget
{
    Q_OBJECT

public:
    explicit frmSimplePhoneBook(const appearance::FormContext &context);
    ~frmSimplePhoneBook() override;

    /// Shows every entry, forgets the search text, and stands on the entry of that SN.
    void showAll(std::optional<qint32> sn = {});
    /// Shows the entries of a query in the given words.
    void showQuery(const QString &query);

    /// The SN of the entry that the list stands on; empty without one.
    std::optional<qint32> currentSn() const;

Q_SIGNALS:
    void addAsked();
    void editAsked();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    enum class DeletedBy { Button, Grid };

    void setUpGrid();
    void connectControls();
    void connectGrid();
    void layOutColumns();
    void bind(const QString &query, std::optional<qint32> sn = {});
    void search();
    void refresh();
    void deleteCurrent(DeletedBy means);
    void standOn(int row);
    void standOnWanted();
    void showCount();
    void showAllFound();
    void showHint();
    void showReadingTrouble();
    void showWritingTrouble();
    void settle(const QPersistentModelIndex &cell, PhoneBookEntry loaded, const QString &typed);
    void editAgain(const QPersistentModelIndex &cell, const QString &typed);
    void showMenu(const QPoint &position);
    void notice(const QString &text);

    const appearance::FormContext m_context;
    std::unique_ptr<Ui::frmSimplePhoneBook> m_ui;
    appearance::FormSetup m_setup;
    DataPhonebook *m_data; ///< a child
    appearance::SearchWhileTyping m_typing;
    QString m_asked;                ///< the query last asked for
    std::optional<qint32> m_wanted; ///< the SN to stand on, once it is found
    int m_standsOn = -1;            ///< the row where it was found last
};

} // namespace phonebook
