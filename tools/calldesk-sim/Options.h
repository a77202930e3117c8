#pragma once

#include "DatagramTemplate.h"

#include <QHostAddress>
#include <QStringList>

#include <optional>
#include <stdexcept>

namespace sim {

/// The command line or a scene file asks for something that cannot be; the text tells what, in UTF-8.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString &text) : std::runtime_error(text.toStdString()) {}
};

struct Options
{
    QString help; ///< not empty: this text is all that was asked for

    DatagramTemplate datagram; ///< kind None when a file is played, or nothing sent
    QString replayFile;
    QString sceneFile;
    QString say; ///< a line printed when the datagram is sent

    QString host;
    quint16 port = 0;
    QHostAddress from = QHostAddress(QHostAddress::AnyIPv4);

    qint64 count = 1;
    qint64 first = 1;
    qint64 burst = 1;
    double rate = 0; ///< datagrams a second; 0: as fast as the socket takes them

    std::optional<quint16> listenPort;
    std::optional<double> seconds; ///< how long to listen after the last datagram; unset: until interrupted
    bool print = false;
    bool quiet = false;
};

/// `arguments` as the program got them, its own name first. Throws UsageError.
Options parseOptions(const QStringList &arguments);

/// One step of a scene: only the options that describe a datagram are allowed. Throws UsageError.
Options parseStep(const QStringList &arguments, const CodePageChoice &codePage);

} // namespace sim
