#include "reception/Dispatcher.h"

#include "core/TextUtilities.h"

#include <QStringBuilder>

using namespace Qt::StringLiterals;

namespace reception {

Dispatcher::Dispatcher(core::Settings &settings, core::RunLog &log, core::ProcessValues &values,
                       const core::CodePage &codePage, CallEffects &effects)
    : m_settings(settings), m_log(log), m_values(values), m_codePage(codePage), m_effects(effects)
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
    const bool popUp = popsUp(datagram);
    if (popUp) {
        m_effects.showMainWindow();
    }
    const core::CallRecord record = parseCallRecord(datagram);
    if (popUp || m_settings.record.ListUnpoppedCalls != 0) {
        m_effects.ShowCallerID_tarn(record);
    }
    m_effects.showLastCaller(record, lastCallerText(record));
    if (popUp) {
        m_effects.ShowPopup(record);
    }
    m_values.LastCallerNumber = record.CallerID;
    m_log.WriteRunLog(datagram.text);
}

bool Dispatcher::popsUp(const core::DatagramText &datagram)
{
    return m_settings.record.PopupAllLines == 1 ||
           m_effects.callerPopsUp(callerNumberByCharacters(datagram.text));
}

QString Dispatcher::lastCallerText(const core::CallRecord &record)
{
    using core::shownText;
    // A record without a previous call has its parameter blocks in the same columns.
    const QStringView tail = record.Tail.startsWith(u'{') ? QStringView() : QStringView(record.Tail);
    return "   "_L1 % shownText(record.CallerID) % "     "_L1 % shownText(record.SimpleDes) % "     "_L1 %
           shownText(m_effects.GetArea(record.CallerID)) % "\r\n"_L1 % "last call time:"_L1 %
           shownText(tail.mid(0, 16)) % " ext:"_L1 % shownText(tail.mid(16, 8)) % " tel:"_L1 %
           shownText(tail.right(15));
}

QString Dispatcher::describeLast() const
{
    return describeDatagram(m_last);
}

} // namespace reception
