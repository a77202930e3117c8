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
        PopupInfo caller = popupInfoOf(info);
        caller.time = caller.time.isValid() ? caller.time : m_context.clock.now().time();
        std::optional<PopUpView> view = decidePopUp(caller, detail, m_context.texts);
        if (!view) {
            return;
        }
        m_next = std::move(view);
        m_isEarlier = false;
        m_screen.schedule();
    });
}

void CallerPopUp::nextCall()
{
    m_isEarlier = true;
    m_screen.schedule();
}

void CallerPopUp::showNext()
{
    m_context.log.trap("ShowPopup"_L1, [&] {
        const std::optional<PopUpView> view = std::exchange(m_next, std::nullopt);
        bool stands = m_form != nullptr && m_form->isVisible(); // one that was closed is about to be deleted
        if (view) {
            if (!stands) {
                m_form = new frmPopUp(m_context.navigator, m_context.services);
            }
            m_form->showCaller(*view, m_context.mainWindow());
            stands = true;
        }
        if (stands && m_isEarlier) {
            m_form->showAsEarlier();
        }
    });
}

void CallerPopUp::callerRenamed(const QString &source, qint32 sn, const QString &name)
{
    if (m_form != nullptr && m_form->isVisible()) {
        m_form->followName(source, sn, name);
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
