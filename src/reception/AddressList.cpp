#include "reception/AddressList.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace reception {

namespace {

constexpr int allBits = 128;
constexpr int ipv4Bits = 32;

Q_IPV6ADDR ipv6Form(const QHostAddress &address)
{
    if (address.protocol() != QAbstractSocket::IPv4Protocol) {
        return address.toIPv6Address();
    }
    const quint32 ipv4 = address.toIPv4Address();
    Q_IPV6ADDR mapped = {};
    constexpr int markAt = 10;
    std::fill_n(&mapped[markAt], 2, quint8(0xFF));
    for (int byte = 0; byte < 4; ++byte) {
        mapped[12 + byte] = quint8(ipv4 >> (24 - 8 * byte));
    }
    return mapped;
}

bool sameBits(const Q_IPV6ADDR &left, const Q_IPV6ADDR &right, int bits)
{
    for (int byte = 0; bits > 0; ++byte, bits -= 8) {
        const int differing = left[byte] ^ right[byte];
        if ((bits < 8 ? differing >> (8 - bits) : differing) != 0) {
            return false;
        }
    }
    return true;
}

} // namespace

AddressList AddressList::fromText(const QString &text)
{
    AddressList list;
    int number = 0;
    for (const QString &line : text.split(u'\n')) {
        ++number;
        const QString entry = line.section(u'#', 0, 0).trimmed();
        if (entry.isEmpty()) {
            continue;
        }
        if (const auto network = networkOf(entry)) {
            list.m_networks.push_back(*network);
        } else {
            list.m_unreadable.append(QString::number(number) + u": "_s + entry);
        }
    }
    return list;
}

// An address with a part left out would be read as another one than was meant.
std::optional<AddressList::Network> AddressList::networkOf(const QString &entry)
{
    static const QRegularExpression shape(
        u"^((?:[0-9]{1,3}\\.){3}[0-9]{1,3}|[0-9A-Fa-f:.]*:[0-9A-Fa-f:.]*)(?:/([0-9]{1,3}))?$"_s);
    const QRegularExpressionMatch match = shape.match(entry);
    const QHostAddress address(match.captured(1));
    if (!match.hasMatch() || address.isNull()) {
        return std::nullopt;
    }
    const bool isIpv4 = address.protocol() == QAbstractSocket::IPv4Protocol;
    const int most = isIpv4 ? ipv4Bits : allBits;
    const int prefix = match.hasCaptured(2) ? match.captured(2).toInt() : most;
    if (prefix > most) {
        return std::nullopt;
    }
    return Network{ipv6Form(address), prefix + allBits - most};
}

bool AddressList::contains(const QHostAddress &address) const
{
    const Q_IPV6ADDR form = ipv6Form(address);
    return std::ranges::any_of(
        m_networks, [&](const Network &network) { return sameBits(network.address, form, network.prefix); });
}

} // namespace reception
