#include "reception/Dispatcher.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace reception {

Dispatcher::Dispatcher(core::Settings &settings, core::RunLog &log, core::ProcessValues &values,
                       const core::CodePage &codePage, const core::Callers &callers, CallEffects &effects)
    : m_settings(settings), m_log(log), m_values(values), m_codePage(codePage), m_callers(callers),
      m_effects(effects)
{
    m_saveLater.setSingleShot(true);
    QObject::connect(&m_saveLater, &QTimer::timeout, &m_saveLater, [this] { m_settings.SaveMisc(); });
}

void Dispatcher::Winsock1_DataArrival(const Datagram &datagram)
{
    m_log.trapAs("winsock1 DataArrival "_L1, [&] {
        m_last = m_codePage.decode(datagram.bytes);
        rememberSender(datagram);
        m_log.WriteRunLog(m_last.text);
        dispatch(m_last);
    });
}

// Comparing with the record's text decodes and trims it, too dear for every datagram of the same sender.
void Dispatcher::rememberSender(const Datagram &datagram)
{
    if (datagram.sender == m_lastSender) {
        return;
    }
    m_lastSender = datagram.sender;
    const QString sender = datagram.sender.toString();
    core::SettingsRecord &record = m_settings.record;
    if (sender != record.LastSenderIp.text()) {
        record.LastSenderIp.setText(sender);
        record.LastSenderPort = datagram.senderPort;
        saveSender();
    }
}

// At once, but datagrams of ever new senders must not cost a write to the disk each.
void Dispatcher::saveSender()
{
    constexpr qint64 pauseMs = 100;
    if (!m_sinceSave.isValid() || m_sinceSave.elapsed() >= pauseMs) {
        m_settings.SaveMisc();
        m_sinceSave.start();
    } else if (!m_saveLater.isActive()) {
        m_saveLater.start(int(pauseMs));
    }
}

void Dispatcher::saveNow()
{
    if (m_saveLater.isActive()) {
        m_saveLater.stop();
        m_settings.SaveMisc();
    }
}

void Dispatcher::dispatch(const core::DatagramText &datagram)
{
    switch (kindOf(datagram.text)) {
    case DatagramKind::ShortCid:
    case DatagramKind::Detail:
        m_effects.setMainWindowNormal();
        break;
    case DatagramKind::SmallMessage:
        m_effects.ShowSmallMessage(datagram.text);
        break;
    case DatagramKind::ShutDown:
        m_effects.byebye(u"No"_s);
        break;
    case DatagramKind::ChannelStatus:
        m_log.WriteRunLog(datagram.text);
        break;
    case DatagramKind::CallerId:
        handleCall(datagram);
        break;
    case DatagramKind::Unknown:
        break;
    }
}

void Dispatcher::handleCall(const core::DatagramText &datagram)
{
    lookAgain(); // so that none of those before is listed behind this one
    Call call{.record = parseCallRecord(datagram), .number = callerNumberByCharacters(datagram.text)};
    m_callers.completeFromDesk(call.record);
    call.popsUp = popsUp(call);
    call.isListed = call.popsUp || m_settings.record.ListUnpoppedCalls != 0;
    if (call.popsUp) {
        m_effects.showMainWindow();
    }
    if (call.isListed) {
        m_effects.ShowCallerID_tarn(call.record);
    }
    showAsLast(call);
    m_values.LastCallerNumber = call.record.CallerID;
    m_log.WriteRunLog(datagram.text);
    keep(std::move(call));
}

bool Dispatcher::popsUp(const Call &call) const
{
    return m_settings.record.PopupAllLines == 1 || m_callers.callerPopsUp(call.number, call.record.CallerID);
}

void Dispatcher::showAsLast(const Call &call)
{
    m_effects.showLastCaller();
    if (call.popsUp) {
        m_effects.ShowPopup(call.record);
    }
}

// As the last one, and as long as nobody is known, to be looked at again.
void Dispatcher::keep(Call call)
{
    if (m_callers.areKnown()) {
        m_lastCall = std::move(call.record);
        return;
    }
    m_lastCall = call.record;
    const auto most = static_cast<size_t>(m_values.MaxGridRows - 1); // one row of the grid is its header
    m_unidentified.push_back(std::move(call));
    if (m_unidentified.size() > most) {
        m_unidentified.pop_front();
    }
}

// As long as nobody was known, every call was kept: the last of them is the last one that came.
void Dispatcher::lookAgain()
{
    if (m_unidentified.empty() || !m_callers.areKnown()) {
        return;
    }
    const std::deque<Call> calls = std::exchange(m_unidentified, {});
    auto listed = int(std::ranges::count(calls, true, &Call::isListed));
    for (const Call &before : calls) {
        Call call = before;
        m_callers.completeFromDesk(call.record);
        call.popsUp = popsUp(call);
        if (before.isListed) {
            --listed;
            m_effects.showCallAgain(before.record, call.record);
        } else if (call.popsUp) {
            m_effects.showEarlierCall(call.record, listed);
        }
        const bool changed = call.popsUp != before.popsUp || call.record.SnText != before.record.SnText ||
                             call.record.SimpleDes != before.record.SimpleDes;
        if (changed && &before == &calls.back()) {
            if (call.popsUp) {
                m_effects.showMainWindow();
            }
            m_lastCall = call.record;
            showAsLast(call);
        }
    }
}

QString Dispatcher::describeLast() const
{
    return describeDatagram(m_last);
}

} // namespace reception
