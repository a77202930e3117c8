#pragma once

#include "appearance/FormContext.h"
#include "appearance/MemoText.h"
#include "lookup/OwnerLine.h"
#include "phonebook/PhoneBookEntry.h"

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class frmSimplePhoneBookEdit;
}

namespace phonebook {

/// The editor of one entry. What was typed is never thrown away without asking. Deletes itself when closed.
class frmSimplePhoneBookEdit : public QDialog
{
    Q_OBJECT

public:
    struct Needs
    {
        appearance::FormContext forms;
        const lookup::ExistenceChecks &checks;
        std::function<void(qint32 sn)> rebindList; ///< see Desk
    };

    explicit frmSimplePhoneBookEdit(const Needs &needs);
    ~frmSimplePhoneBookEdit() override;

    /// Shows an entry of the table, the mode "EDIT". Typed changes of this very entry are left standing.
    void editEntry(const PhoneBookEntry &entry);
    /// Shows an entry that is yet to be written, the mode "ADD".
    void addEntry(const QString &number, const QString &name);

    void reject() override { close(); }

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Mode { Add, Edit };

    void connectControls();
    void fill(const PhoneBookEntry &entry, Mode mode);
    void follow(const PhoneBookEntry &entry);
    PhoneBookEntry contents() const;
    bool isChanged() const { return contents() != m_loaded; }
    QWidget *controlOf(const QString &column) const;
    bool mayDropContents();
    bool isUnchecked() const;
    void checkNumbers();
    void showOwner();
    bool save();

    const Needs m_needs;
    std::unique_ptr<Ui::frmSimplePhoneBookEdit> m_ui;
    appearance::FormSetup m_setup;
    appearance::MemoText m_detailDes;
    Mode m_mode = Mode::Add;
    PhoneBookEntry m_loaded;  ///< the contents before the operator changed them
    QString m_checkedNumbers; ///< which the operator knows to be on file, or not
    std::optional<lookup::OwnerLine> m_ownerLine;
    QTimer m_typing; ///< runs until the operator pauses in the numbers
};

} // namespace phonebook
