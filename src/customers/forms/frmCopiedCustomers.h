#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "appearance/SearchedList.h"
#include "customers/CustomerEditing.h"
#include "store/ResultModel.h"

#include <memory>
#include <optional>

namespace Ui {
class frmCopiedCustomers;
}

namespace customers {

/// The customers of a copy of the desk, to be looked at and brought back one by one. Deletes itself when
/// closed.
class frmCopiedCustomers : public appearance::Form
{
    Q_OBJECT

public:
    /// All must outlive the form.
    frmCopiedCustomers(const appearance::FormContext &context, CustomerEffects &effects);
    ~frmCopiedCustomers() override;

    /// Shows the customers of a database file; the name says of which copy they are.
    void showCopy(const QString &file, const QString &name);

private:
    void setUpGrid();
    void setUpList();
    void showAnswer(bool whole);
    void bringBack(int row);

    appearance::FormContext m_context;
    CustomerEditing m_editing;
    std::unique_ptr<Ui::frmCopiedCustomers> m_ui;
    store::ResultModel m_rows;
    QString m_file;
    QString m_title; ///< of the window, without the copy's name
    std::optional<appearance::SearchedList> m_list;
    bool m_columnsLaidOut = false;
};

} // namespace customers
