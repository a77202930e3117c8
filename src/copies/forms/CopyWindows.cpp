#include "copies/forms/CopyWindows.h"

namespace copies {

CopyWindows::CopyWindows(const Context &context)
    : m_context(context),
      m_copies([this] { return new frmCopies(m_context.forms, m_context.keeper, m_context.lookInto); })
{}

} // namespace copies
