#include "imports/CardRows.h"

#include "core/TextUtilities.h"
#include "imports/DelimitedRows.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr qsizetype mostLineBytes = 1 << 20; // a picture may be larger, and is not wanted

constexpr std::array columnKeys{
    "CustomerName"_L1, "ContactPersonName"_L1,
    "PhoneNumbers"_L1, "Mobile"_L1,
    "HomePhone"_L1,    "Fax"_L1,
    "Pager"_L1,        "Email"_L1,
    "OtherEmails"_L1,  "Address"_L1,
    "City"_L1,         "Province"_L1,
    "PostalCode"_L1,   "CountryOrArea"_L1,
    "Department"_L1,   "WorkTitle"_L1,
    "WebPage"_L1,      "InstantMessager"_L1,
    "CustomerType"_L1, "CustomerMemo"_L1,
};

/// What stands between the name of a property and its value.
struct Parameters
{
    QStringList types; ///< in capitals
    QByteArray charset;
    bool isQuotedPrintable = false;
    bool isBinary = false;
};

Parameters parametersOf(const QByteArrayList &parts)
{
    Parameters parameters;
    for (const QByteArray &part : parts) {
        const QByteArray upper = part.toUpper();
        const QByteArray value = upper.mid(upper.indexOf('=') + 1).replace('"', "");
        if (upper.startsWith("CHARSET=")) {
            parameters.charset = value;
        } else if (value == "QUOTED-PRINTABLE") {
            parameters.isQuotedPrintable = true;
        } else if (value == "BASE64" || (value == "B" && upper.startsWith("ENCODING="))) {
            parameters.isBinary = true;
        } else if (!upper.contains('=') || upper.startsWith("TYPE=")) {
            parameters.types += QString::fromLatin1(value).split(u',');
        }
    }
    return parameters;
}

// The value of a property begins behind the first colon outside of quotation marks.
qsizetype colonOf(const QByteArray &property)
{
    bool quoted = false;
    for (qsizetype i = 0; i < property.size(); ++i) {
        quoted = quoted != (property.at(i) == '"');
        if (property.at(i) == ':' && !quoted) {
            return i;
        }
    }
    return -1;
}

QByteArray fromQuotedPrintable(const QByteArray &text)
{
    QByteArray bytes;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QByteArray code = text.mid(i + 1, 2);
        bool isCode = false;
        const int byte = code.toInt(&isCode, 16);
        if (text.at(i) == '=' && code.size() == 2 && isCode) {
            bytes.append(static_cast<char>(byte));
            i += 2;
        } else {
            bytes.append(text.at(i));
        }
    }
    return bytes;
}

// The pieces of a value that semicolons part, without the backslashes.
QStringList piecesOf(const QString &value)
{
    QStringList pieces{QString()};
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value.at(i) == u'\\' && i + 1 < value.size()) {
            const QChar escaped = value.at(++i);
            pieces.last() += escaped.toLower() == u'n' ? u'\n' : escaped;
        } else if (value.at(i) == u';') {
            pieces.append(QString());
        } else {
            pieces.last() += value.at(i);
        }
    }
    return pieces;
}

// Given and family name as they are spoken, or as they are written where no blank parts names.
QString spokenName(const QStringList &pieces)
{
    const QString family = pieces.value(0).trimmed();
    const QString given = pieces.value(1).trimmed();
    const auto isWide = [](const QString &name) { return !name.isEmpty() && name.front() >= QChar(0x2E80); };
    if (isWide(family) && isWide(given)) {
        return family + given;
    }
    QStringList parts{pieces.value(3), given, pieces.value(2), family, pieces.value(4)};
    parts.removeAll(QString());
    return parts.join(u' ').simplified();
}

QLatin1StringView phoneColumn(const QStringList &types)
{
    for (const auto &[type, column] : {std::pair(u"FAX"_s, "Fax"_L1),
                                       {u"CELL"_s, "Mobile"_L1},
                                       {u"MOBILE"_s, "Mobile"_L1},
                                       {u"PAGER"_s, "Pager"_L1},
                                       {u"HOME"_s, "HomePhone"_L1}}) {
        if (types.contains(type)) {
            return column;
        }
    }
    return "PhoneNumbers"_L1;
}

} // namespace

struct CardRows::Card
{
    QStringList cells{static_cast<qsizetype>(columnKeys.size()), QString()};
    QString spokenName;
    RowTrouble trouble = RowTrouble::None;

    QString &at(QLatin1StringView column)
    {
        return cells[std::ranges::find(columnKeys, column) - columnKeys.begin()];
    }
    void join(QLatin1StringView column, const QString &text, const QString &sign = u","_s)
    {
        QString &cell = at(column);
        if (text.trimmed().isEmpty()) {
            return;
        }
        if (cell.size() + text.size() > mostCellCharacters) {
            trouble = RowTrouble::Unclosed;
            return;
        }
        cell += (cell.isEmpty() ? QString() : sign) + text.trimmed();
    }
    void addAddress(const QStringList &pieces)
    {
        if (!at("Address"_L1).isEmpty() || !at("City"_L1).isEmpty()) {
            return; // there is one place for an address; the first counts
        }
        for (const int piece : {0, 2, 1}) {
            join("Address"_L1, pieces.value(piece), u", "_s);
        }
        join("City"_L1, pieces.value(3));
        join("Province"_L1, pieces.value(4));
        join("PostalCode"_L1, pieces.value(5));
        join("CountryOrArea"_L1, pieces.value(6));
    }
};

// One line without its end; nothing behind the last. Of one that is too long the beginning is given.
std::optional<QByteArray> CardRows::line()
{
    if (m_ahead) {
        return std::exchange(m_ahead, std::nullopt);
    }
    qsizetype end = m_buffer.indexOf('\n', m_at);
    while (end < 0 && !m_atEnd && m_buffer.size() - m_at <= mostLineBytes) {
        m_buffer.remove(0, m_at);
        m_at = 0;
        const qsizetype looked = m_buffer.size();
        const QByteArray piece = m_text->read();
        m_atEnd = piece.isEmpty();
        m_buffer += piece;
        end = m_buffer.indexOf('\n', looked);
    }
    if (m_at == m_buffer.size() && m_atEnd) {
        return {};
    }
    const qsizetype behind = end < 0 ? m_buffer.size() : end;
    QByteArray found = m_buffer.mid(m_at, behind - m_at);
    m_at = end < 0 ? behind : end + 1;
    return found.endsWith('\r') ? found.chopped(1) : found;
}

// A property, put together from the lines over which it goes.
std::optional<QByteArray> CardRows::property()
{
    std::optional<QByteArray> whole = line();
    if (!whole) {
        return {};
    }
    const QByteArray head = whole->left(whole->indexOf(':')).toUpper();
    const bool softBreaks = head.contains("QUOTED-PRINTABLE");
    for (std::optional<QByteArray> more = line(); more; more = line()) {
        const bool soft = softBreaks && whole->endsWith('=');
        const bool folded = !soft && (more->startsWith(' ') || more->startsWith('\t'));
        if (!soft && !folded) {
            m_ahead = more;
            break;
        }
        if (whole->size() <= mostLineBytes) {
            whole->chop(soft ? 1 : 0);
            whole->append(QByteArrayView(*more).sliced(soft ? 0 : 1));
        } else if (soft && !more->endsWith('=')) {
            whole->chop(1);
        }
    }
    return whole;
}

std::optional<SourceRow> CardRows::next()
{
    if (!std::exchange(m_namedColumns, true)) {
        QStringList keys;
        for (const QLatin1StringView key : columnKeys) {
            keys.append(key);
        }
        return SourceRow{.cells = keys};
    }
    std::optional<Card> card;
    for (std::optional<QByteArray> found = property(); found; found = property()) {
        const QByteArray upper = found->left(64).trimmed().toUpper();
        if (upper == "BEGIN:VCARD") {
            card.emplace();
            ++m_number;
        } else if (upper == "END:VCARD" && card) {
            card->join("ContactPersonName"_L1,
                       card->at("ContactPersonName"_L1).isEmpty() ? card->spokenName : QString());
            if (card->trouble != RowTrouble::None || !isBlank(card->cells)) {
                return SourceRow{.number = m_number, .cells = card->cells, .trouble = card->trouble};
            }
            card.reset();
        } else if (card) {
            add(*card, *found);
        }
    }
    return {}; // a card without an end was cut off
}

void CardRows::add(Card &card, const QByteArray &property) const
{
    const qsizetype colon = colonOf(property);
    if (colon < 0) {
        return;
    }
    QByteArrayList parts = property.left(colon).split(';');
    QByteArray name = parts.takeFirst().trimmed().toUpper();
    name.remove(0, name.lastIndexOf('.') + 1); // of a group
    const Parameters parameters = parametersOf(parts);
    static const QByteArrayList wanted{"FN",  "N",   "ORG",  "TITLE", "TEL",       "EMAIL",
                                       "ADR", "URL", "NOTE", "IMPP",  "CATEGORIES"};
    if (parameters.isBinary || !wanted.contains(name)) {
        return;
    }
    const QByteArray bytes = property.mid(colon + 1);
    const std::optional<QString> value =
        decode(parameters.isQuotedPrintable ? fromQuotedPrintable(bytes) : bytes, parameters.charset);
    if (!value || value->size() > mostCellCharacters) {
        card.trouble = value ? RowTrouble::Unclosed : RowTrouble::Characters;
        return;
    }
    const QStringList pieces = piecesOf(*value);
    const QString whole = pieces.join(u';');
    if (name == "FN") {
        card.join("ContactPersonName"_L1, card.at("ContactPersonName"_L1).isEmpty() ? whole : QString());
    } else if (name == "N") {
        card.spokenName = spokenName(pieces);
    } else if (name == "ORG") {
        card.join("CustomerName"_L1, card.at("CustomerName"_L1).isEmpty() ? pieces.first() : QString());
        card.join("Department"_L1, pieces.mid(1).join(u' '));
    } else if (name == "TITLE") {
        card.join("WorkTitle"_L1, whole, u", "_s);
    } else if (name == "TEL") {
        const bool isUri = whole.startsWith("tel:"_L1, Qt::CaseInsensitive);
        card.join(phoneColumn(parameters.types), isUri ? whole.mid(4).section(u';', 0, 0) : whole);
    } else if (name == "EMAIL") {
        card.join(card.at("Email"_L1).isEmpty() ? "Email"_L1 : "OtherEmails"_L1, whole);
    } else if (name == "ADR") {
        card.addAddress(pieces);
    } else {
        const bool isNote = name == "NOTE";
        const QLatin1StringView column = isNote           ? "CustomerMemo"_L1
                                         : name == "URL"  ? "WebPage"_L1
                                         : name == "IMPP" ? "InstantMessager"_L1
                                                          : "CustomerType"_L1;
        card.join(column, whole, isNote ? u"\n"_s : u", "_s);
    }
}

// A card of the oldest kind may name a character set for a property of its own.
std::optional<QString> CardRows::decode(const QByteArray &bytes, const QByteArray &charset) const
{
    if (charset.isEmpty()) {
        return m_text->decode(bytes);
    }
    QStringDecoder decoder(charset.constData(), QStringConverter::Flag::Stateless);
    if (!decoder.isValid()) {
        return m_text->decode(bytes);
    }
    QString text = decoder.decode(bytes);
    return decoder.hasError() || text.contains(QChar(0)) ? std::nullopt : std::optional(text);
}

} // namespace imports
