#include "lookup/forms/CallerPopUp.h"

#include "core/TextUtilities.h"

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr std::chrono::seconds betweenAges{1};

} // namespace

CallerPopUp::CallerPopUp(Context context)
    : m_context(std::move(context)), m_screen([this] { showNext(); }),
      m_notes(m_context.paths, m_context.log),
      m_form([this] { return new frmPopUp(m_context.navigator, m_context.services); })
{
    QObject::connect(&m_notes, &CallerNotes::isRead, &m_notes,
                     [this](const CallerNotes::Summary &summary) { showNotes(summary); });
    QObject::connect(&m_aging, &QTimer::timeout, &m_aging, [this] { showAge(); });
}

void CallerPopUp::ShowPopup(const core::CallRecord &info)
{
    m_context.log.trap("ShowPopup"_L1, [&] {
        const bool ordinaryToo = m_context.settings.record.PopupDetail == 1;
        if (!opensCard(info, ordinaryToo)) {
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
            show(cardViewOf(*caller, m_context.texts));
        }
        if (frmPopUp *card = m_form.ifOpen(); card != nullptr && m_isEarlier) {
            card->showAsEarlier();
        }
    });
}

void CallerPopUp::show(const CardView &view)
{
    m_form.get().showCaller(view, m_context.mainWindow());
    m_arrived = m_context.clock.now();
    m_aging.start(betweenAges);
    m_notes.drop();
    if (core::isCustomer(view.caller)) {
        m_notes.read(view.caller->sn);
    }
}

void CallerPopUp::showAge()
{
    frmPopUp *card = m_form.ifOpen();
    if (card == nullptr) {
        return m_aging.stop();
    }
    card->showAge(ageText(m_arrived.secsTo(m_context.clock.now()), m_context.texts));
}

void CallerPopUp::showNotes(const CallerNotes::Summary &summary)
{
    if (frmPopUp *card = m_form.ifOpen()) {
        card->showNotes(notesText(summary.lastDate, summary.open, m_context.texts));
    }
}

void CallerPopUp::callerRenamed(core::RowKey caller, const QString &name)
{
    if (frmPopUp *card = m_form.ifOpen()) {
        card->followName(caller, name);
    }
}

void CallerPopUp::close()
{
    m_next.reset();
    if (frmPopUp *card = m_form.ifOpen()) {
        card->close();
    }
}

} // namespace lookup
