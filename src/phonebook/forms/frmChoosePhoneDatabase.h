#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"

#include <functional>
#include <memory>

namespace Ui {
class frmChoosePhoneDatabase;
}

namespace phonebook {

/// Asks where an unknown caller is to be filed. Deletes itself when closed.
class frmChoosePhoneDatabase : public appearance::Form
{
    Q_OBJECT

public:
    using AddEntry = std::function<void(const QString &number, const QString &name)>;

    /// `addEntry` opens the phone book's editor for a new entry.
    frmChoosePhoneDatabase(const appearance::FormContext &context, AddEntry addEntry);
    ~frmChoosePhoneDatabase() override;

    /// `keyWord` is what the call says of the caller, and his name unless it is his number again.
    void setCaller(const QString &number, const QString &keyWord);

private:
    void openChosen();

    appearance::FormContext m_context;
    AddEntry m_addEntry;
    QString m_name;
    std::unique_ptr<Ui::frmChoosePhoneDatabase> m_ui;
};

} // namespace phonebook
