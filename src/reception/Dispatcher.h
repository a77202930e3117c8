#pragma once

#include "core/Callers.h"
#include "core/CodePage.h"
#include "core/ProcessValues.h"
#include "core/RunLog.h"
#include "core/Settings.h"
#include "reception/CallEffects.h"
#include "reception/Datagram.h"
#include "reception/Records.h"

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include <deque>

namespace reception {

/// Turns each arriving datagram into action: remembers its sender, logs it, recognises its kind and causes
/// what that kind is for.
class Dispatcher
{
public:
    /// Everything must outlive the dispatcher.
    Dispatcher(core::Settings &settings, core::RunLog &log, core::ProcessValues &values,
               const core::CodePage &codePage, const core::Callers &callers, CallEffects &effects);

    void Winsock1_DataArrival(const Datagram &datagram);

    /// Callers can be identified by now: brings what calls have shown before up to date.
    void lookAgain();

    /// Saves a sender that waits to be saved; call before the program ends.
    void saveNow();

    /// The call that came last, with what is known of it by now; only once there was one.
    const core::CallRecord &lastCall() const { return m_lastCall; }

    /// The last datagram field by field (see describeDatagram); empty before the first.
    QString describeLast() const;

private:
    /// A call as it came, with what the popup filter looks it up by.
    struct Call
    {
        core::CallRecord record;
        QString number;
        bool popsUp = false;
        bool isListed = false;
    };

    void rememberSender(const Datagram &datagram);
    void saveSender();
    void dispatch(const core::DatagramText &datagram);
    void handleCall(const core::DatagramText &datagram);
    bool popsUp(const Call &call) const;
    void showAsLast(const Call &call);
    void keep(Call call);

    core::Settings &m_settings;
    core::RunLog &m_log;
    core::ProcessValues &m_values;
    const core::CodePage &m_codePage;
    const core::Callers &m_callers;
    CallEffects &m_effects;
    std::deque<Call> m_unidentified; ///< the newest of those that came while nobody's number was known
    QHostAddress m_lastSender;
    QElapsedTimer m_sinceSave;
    QTimer m_saveLater;
    core::DatagramText m_last;
    core::CallRecord m_lastCall;
};

} // namespace reception
