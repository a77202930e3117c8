#pragma once

#include "appearance/OneWindow.h"
#include "core/CallRecord.h"
#include "core/FrameGate.h"
#include "core/RunLog.h"
#include "core/Settings.h"
#include "lookup/CallerNotes.h"
#include "lookup/CardDecision.h"
#include "lookup/forms/frmPopUp.h"

#include <QDateTime>
#include <QTimer>

#include <functional>
#include <optional>

namespace lookup {

/// Decides by the call record which callers come up, and shows them on the one card. Of several calls within
/// one frame of the screen the newest is shown.
class CallerPopUp
{
public:
    /// All of it must outlive the card.
    struct Context
    {
        const core::Paths &paths;
        core::RunLog &log;
        const core::Settings &settings;
        const core::TextLookup &texts;
        const core::Clock &clock;
        core::Navigator &navigator;
        appearance::FormServices services;
        std::function<const QWidget &()> mainWindow;
    };

    explicit CallerPopUp(Context context);

    void ShowPopup(const core::CallRecord &info);
    /// Another call has come: a card that stands is told apart from it, unless ShowPopup now fills it.
    void nextCall();
    /// If the card is this caller's, it shows his new name.
    void callerRenamed(core::RowKey caller, const QString &name);
    /// Closes the card, if one stands.
    void close();

private:
    void showNext();
    void show(const CardView &view);
    void showAge();
    void showNotes(const CallerNotes::Summary &summary);

    Context m_context;
    core::FrameGate m_screen;
    CallerNotes m_notes;
    QTimer m_aging;
    std::optional<PopupInfo> m_next;
    QDateTime m_arrived;      ///< of the call on the card
    bool m_isEarlier = false; ///< what the card shows, or will show next
    appearance::OneWindow<frmPopUp> m_form;
};

} // namespace lookup
