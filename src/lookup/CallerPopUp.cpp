#include "lookup/CallerPopUp.h"

using namespace Qt::StringLiterals;

namespace lookup {

CallerPopUp::~CallerPopUp()
{
    delete m_form;
}

void CallerPopUp::ShowPopup(const core::CallRecord &info)
{
    m_context.log.trap("ShowPopup"_L1, [&] {
        const bool detail = m_context.settings.record.PopupDetail == 1;
        std::optional<PopUpView> view = decidePopUp(popupInfoOf(info), detail, m_context.texts);
        if (!view) {
            return;
        }
        m_next = std::move(view);
        m_screen.schedule();
    });
}

void CallerPopUp::showNext()
{
    m_context.log.trap("ShowPopup"_L1, [&] {
        const std::optional<PopUpView> view = std::exchange(m_next, std::nullopt);
        if (!view) {
            return;
        }
        if (m_form == nullptr || !m_form->isVisible()) { // one that was closed is about to be deleted
            m_form = new frmPopUp(m_context.navigator, m_context.services);
        }
        m_form->showCaller(*view, m_context.mainWindow());
    });
}

void CallerPopUp::customerRenamed(qint32 sn, const QString &name)
{
    if (m_form != nullptr && m_form->isVisible()) {
        m_form->followName(sn, name);
    }
}

void CallerPopUp::close()
{
    m_next.reset();
    if (m_form != nullptr) {
        m_form->close();
    }
}

} // namespace lookup
