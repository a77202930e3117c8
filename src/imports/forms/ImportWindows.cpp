#include "imports/forms/ImportWindows.h"

using namespace Qt::StringLiterals;

namespace imports {

ImportWindows::ImportWindows(const Context &context)
    : m_context(context), m_customers([this] {
          return new frmImport({.forms = m_context.forms,
                                .codePage = m_context.codePage.number(),
                                .title = u"ImportCustomersTitle"_s,
                                .target = customersOf(m_context.forms.paths),
                                .copyDesk = m_context.copyDesk,
                                .imported = m_context.customersImported});
      }),
      m_phoneBook([this] {
          return new frmImport({.forms = m_context.forms,
                                .codePage = m_context.codePage.number(),
                                .title = u"ImportPhoneBookTitle"_s,
                                .target = phoneBookOf(m_context.forms.paths),
                                .copyDesk = m_context.copyDesk,
                                .imported = m_context.entriesImported});
      })
{}

} // namespace imports
