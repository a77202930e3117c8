#include "lookup/forms/CallerPopUp.h"

#include "core/TextUtilities.h"

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr std::chrono::seconds betweenAges{1};

} // namespace

CallerPopUp::CallerPopUp(Context context)
    : m_context(std::move(context)), m_screen([this] { showNext(); }), m_notes(m_context.paths, m_context.log)
{
    QObject::connect(&m_notes, &CallerNotes::isRead, &m_notes,
                     [this](const CallerNotes::Summary &summary) { showNotes(summary); });
    QObject::connect(&m_aging, &QTimer::timeout, &m_aging, [this] { showAge(); });
}

CallerPopUp::~CallerPopUp()
{
    delete m_form;
}

void CallerPopUp::ShowPopup(const core::CallRecord &info)
{
    m_context.log.trap("ShowPopup"_L1, [&] {
        const bool detail = m_context.settings.record.PopupDetail == 1;
        if (!opensCard(info, detail)) {
            return;
        }
        PopupInfo caller = popupInfoOf(info);
        caller.time = caller.time.isValid() ? caller.time : m_context.clock.now().time();
        m_next = std::move(caller);
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
        const std::optional<PopupInfo> caller = std::exchange(m_next, std::nullopt);
        if (caller) {
            show(popUpViewOf(*caller, m_context.texts));
        }
        const bool stands =
            m_form != nullptr && m_form->isVisible(); // one that was closed is about to be deleted
        if (stands && m_isEarlier) {
            m_form->showAsEarlier();
        }
    });
}

void CallerPopUp::show(const PopUpView &view)
{
    if (m_form == nullptr || !m_form->isVisible()) {
        m_form = new frmPopUp(m_context.navigator, m_context.services);
    }
    m_form->showCaller(view, m_context.mainWindow());
    m_arrived = m_context.clock.now();
    m_aging.start(betweenAges);
    m_notes.drop();
    if (view.txtSnType == "CUSTOMER"_L1) {
        m_notes.read(core::leadingNumber(view.txtSN));
    }
}

void CallerPopUp::showAge()
{
    if (m_form == nullptr) {
        m_aging.stop();
        return;
    }
    m_form->showAge(ageText(m_arrived.secsTo(m_context.clock.now()), m_context.texts));
}

void CallerPopUp::showNotes(const CallerNotes::Summary &summary)
{
    if (m_form != nullptr) {
        m_form->showNotes(notesText(summary.lastDate, summary.open, m_context.texts));
    }
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
