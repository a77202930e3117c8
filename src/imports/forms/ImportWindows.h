#pragma once

#include "appearance/OneWindow.h"
#include "core/CodePage.h"
#include "imports/forms/frmImport.h"

namespace imports {

/// The windows that import a list into the customers and into the phone book, one of each.
class ImportWindows
{
public:
    /// All of it must outlive the windows.
    struct Context
    {
        const appearance::FormContext &forms;
        const core::CodePage &codePage; ///< of texts that do not tell theirs
        ListImport::CopyDesk copyDesk;
        std::function<void(const ImportReport &report)> customersImported; ///< what that causes elsewhere
        std::function<void(const ImportReport &report)> entriesImported;
    };
    explicit ImportWindows(const Context &context);

    void showCustomers() { m_customers.get().bringToFront(); }
    void showPhoneBook() { m_phoneBook.get().bringToFront(); }

private:
    Context m_context;
    appearance::OneWindow<frmImport> m_customers;
    appearance::OneWindow<frmImport> m_phoneBook;
};

} // namespace imports
