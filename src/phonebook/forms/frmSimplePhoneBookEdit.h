#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "lookup/forms/OwnerLine.h"
#include "phonebook/PhoneBookEntry.h"

#include <memory>

namespace Ui {
class frmSimplePhoneBookEdit;
}

namespace phonebook {

/// The editor of one entry. What was typed is never thrown away without asking. Deletes itself when closed.
class frmSimplePhoneBookEdit : public appearance::Form
{
    Q_OBJECT

public:
    struct Context
    {
        appearance::FormContext forms;
        const lookup::ExistenceChecks &checks;
        std::function<void(const PhoneBookEntry &entry)> entrySaved; ///< see Desk
    };

    explicit frmSimplePhoneBookEdit(const Context &context);
    ~frmSimplePhoneBookEdit() override;

    /// Shows an entry of the table. Typed changes of this very entry are left standing.
    /// False where the operator goes on with another one.
    bool editEntry(const PhoneBookEntry &entry);
    /// Shows an entry that is yet to be written.
    void addEntry(const QString &number, const QString &name);

protected:
    bool mayClose() override { return mayDropContents(); }

private:
    void connectControls();
    void fill(const PhoneBookEntry &entry);
    void follow(const PhoneBookEntry &entry);
    PhoneBookEntry contents() const;
    bool isChanged() const { return contents() != m_loaded; }
    QWidget *controlOf(const QString &column) const;
    bool mayDropContents();
    bool save();

    Context m_context;
    std::unique_ptr<Ui::frmSimplePhoneBookEdit> m_ui;
    PhoneBookEntry m_loaded; ///< the contents before the operator changed them; has an SN once it is on file
    std::optional<lookup::OwnerLine> m_ownerLine;
};

} // namespace phonebook
