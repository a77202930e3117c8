#pragma once

#include "appearance/FormContext.h"

#include <QDialog>

#include <functional>
#include <memory>

namespace Ui {
class frmChoosePhoneDatabase;
}

namespace phonebook {

/// Asks where an unknown caller's number is to be filed. Deletes itself when closed.
class frmChoosePhoneDatabase : public QDialog
{
    Q_OBJECT

public:
    /// `addEntry` opens the phone book's editor for a new entry with that number.
    frmChoosePhoneDatabase(const appearance::FormContext &context,
                           std::function<void(const QString &number)> addEntry);
    ~frmChoosePhoneDatabase() override;

    void setCaller(const QString &number, const QString &keyWord);

    /// Opens the editor that was chosen.
    void accept() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    const appearance::FormContext m_context;
    const std::function<void(const QString &)> m_addEntry;
    std::unique_ptr<Ui::frmChoosePhoneDatabase> m_ui;
    appearance::FormSetup m_setup;
};

} // namespace phonebook
