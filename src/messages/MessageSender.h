#pragma once

#include "core/CodePage.h"
#include "core/RunLog.h"
#include "core/Server.h"

#include <QString>

namespace messages {

/// Hands short messages to the server, which passes them on.
class MessageSender
{
public:
    /// All must outlive it.
    MessageSender(core::Server &server, const core::CodePage &codePage, core::RunLog &log)
        : m_server(server), m_codePage(codePage), m_log(log)
    {}

    /// What became of the message on its way into one datagram of the system's code page.
    struct Outcome
    {
        bool sent = false;        ///< it left this computer
        bool cut = false;         ///< only the beginning of the text fitted
        bool altered = false;     ///< the code page lacks some characters of the text
        bool misdirected = false; ///< or some of the destination, which the server then cannot find
    };

    /// `sendTo` is an operator's name or "ALL". Whether the server has received the record is not known.
    Outcome SendSMS(const QString &sendTo, const QString &text);

private:
    core::Server &m_server;
    const core::CodePage &m_codePage;
    core::RunLog &m_log;
};

} // namespace messages
