#include "core/OpenForms.h"

using namespace Qt::StringLiterals;

namespace core {

void OpenForms::IncOpenedForm(QObject *form)
{
    ++m_count;
    if (m_count >= 1 && m_count <= slotCount) {
        m_forms.at(static_cast<size_t>(m_count - 1)) = form;
    }
}

void OpenForms::DecOpenedForm()
{
    m_log.trap("DecOpenedForm"_L1, [&] {
        if (m_count == 0) {
            throw Error(0, u"no form is open"_s);
        }
        --m_count;
    });
}

QObject *OpenForms::form(int slot) const
{
    return slot >= 1 && slot <= slotCount ? m_forms.at(static_cast<size_t>(slot - 1)).data() : nullptr;
}

} // namespace core
