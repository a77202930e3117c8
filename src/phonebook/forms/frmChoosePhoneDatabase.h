#pragma once

#include "appearance/FormContext.h"

#include <QDialog>

#include <functional>
#include <memory>

namespace Ui {
class frmChoosePhoneDatabase;
}

namespace phonebook {

/// Asks where an unknown caller is to be filed. Deletes itself when closed.
class frmChoosePhoneDatabase : public QDialog
{
    Q_OBJECT

public:
    using AddEntry = std::function<void(const QString &number, const QString &name)>;

    /// `addEntry` opens the phone book's editor for a new entry.
    frmChoosePhoneDatabase(const appearance::FormContext &context, AddEntry addEntry);
    ~frmChoosePhoneDatabase() override;

    /// `keyWord` is what the call says of the caller, and his name unless it is his number again.
    void setCaller(const QString &number, const QString &keyWord);

    /// Opens the editor that was chosen.
    void accept() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    const appearance::FormContext m_context;
    const AddEntry m_addEntry;
    QString m_name;
    std::unique_ptr<Ui::frmChoosePhoneDatabase> m_ui;
    appearance::FormSetup m_setup;
};

} // namespace phonebook
