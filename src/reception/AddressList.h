#pragma once

#include <QHostAddress>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace reception {

/// Addresses and networks, IPv4 and IPv6; an IPv4 address is the same in its IPv6 form.
class AddressList
{
public:
    /// One address ("192.168.10.7") or network ("192.168.10.0/24") a line; "#" begins a comment.
    static AddressList fromText(const QString &text);

    bool contains(const QHostAddress &address) const;
    qsizetype size() const { return qsizetype(m_networks.size()); }
    /// The lines that are neither, each behind its number: "3: 192.168.10".
    const QStringList &unreadable() const { return m_unreadable; }

private:
    struct Network
    {
        Q_IPV6ADDR address;
        int prefix; ///< bits that tell
    };
    static std::optional<Network> networkOf(const QString &entry);

    std::vector<Network> m_networks;
    QStringList m_unreadable;
};

} // namespace reception
