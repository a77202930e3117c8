#include "notes/NoteReport.h"

#include "notes/NoteStatements.h"

using namespace Qt::StringLiterals;

namespace notes {

namespace {

constexpr qint32 fieldWidth = 20;
constexpr qint32 headingWidth = 30;
constexpr int ruleWidth = 115;
const auto lineEnd = u"\r\n"_s;

// The texts of an entry, and the columns of the select that hold them.
struct TextColumn
{
    QLatin1StringView name;
    QString ReportLines::Entry::*field;
};
constexpr std::array textColumns{
    TextColumn{"callid"_L1, &ReportLines::Entry::callId},
    TextColumn{"CustomerName"_L1, &ReportLines::Entry::customerName},
    TextColumn{"Consultant"_L1, &ReportLines::Entry::consultant},
    TextColumn{"dateandtime"_L1, &ReportLines::Entry::dateAndTime},
    TextColumn{"request"_L1, &ReportLines::Entry::request},
    TextColumn{"response"_L1, &ReportLines::Entry::response},
    TextColumn{"note"_L1, &ReportLines::Entry::note},
};

int columnOf(const QStringList &names, QLatin1StringView field)
{
    const qsizetype place = store::placeOfField(names, field);
    if (place < 0) {
        throw core::Error(0, u"no such field: "_s + field);
    }
    return static_cast<int>(place);
}

} // namespace

ReportLines::ReportLines(core::RunLog &log) : m_log(log)
{
    m_requestHeading = padded(u"< Request  >"_s, headingWidth);
    m_noteHeading = padded(u"< Note     >"_s, headingWidth);
    const QString response =
        padded(u"< Response >"_s, headingWidth) + padded(u"Been Resolved :"_s, fieldWidth);
    m_responseHeadings = {response + padded(u"No"_s, fieldWidth), response + padded(u"Yes"_s, fieldWidth)};
}

QString ReportLines::padded(const QString &text, qint32 width) const
{
    return store::FillString(m_log, text, true, width, u" "_s);
}

void ReportLines::line(const QString &text)
{
    m_text += text;
    m_text += lineEnd;
}

void ReportLines::append(const Entry &entry, const QString &content)
{
    if (m_customerName != entry.customerName) {
        const QString rule(ruleWidth, u'*');
        line(rule);
        line(padded(u"CustomerName:"_s, fieldWidth) + padded(entry.customerName, fieldWidth));
        line(rule);
    }
    if (beginsCall(entry)) {
        appendCall(entry, content);
    }
    line(m_requestHeading);
    line(entry.request);
    line(m_responseHeadings[entry.ifResolved ? 1 : 0]);
    line(entry.response);
    line(m_noteHeading);
    line(entry.note);
    m_customerName = entry.customerName;
    m_callId = entry.callId;
}

void ReportLines::appendCall(const Entry &entry, const QString &content)
{
    const QString rule(ruleWidth, u'-');
    line(rule);
    line(padded(u"CallID:"_s, fieldWidth) + padded(entry.callId, fieldWidth) +
         padded(u"Date/Time:"_s, fieldWidth) + padded(entry.dateAndTime, fieldWidth));
    line(padded(u"Consultant:"_s, fieldWidth) + padded(entry.consultant, fieldWidth));
    line(padded(u"Content:"_s, fieldWidth));
    line(content);
    line(rule);
}

NoteReport::NoteReport(core::RunLog &log, const QString &customerFile, const QString &select,
                       const std::optional<QString> &customer)
    : m_log(log), m_lines(log)
{
    m_failed = !store::ConnectDatabase(log, m_connection, customerFile) ||
               !log.trap("GetExportContent"_L1, [&] { open(select, customer); });
}

void NoteReport::open(const QString &select, const std::optional<QString> &customer)
{
    const store::Select apart = store::selectOf(select, 2);
    for (const TextColumn &column : textColumns) {
        m_textColumns.push_back(columnOf(apart.names, column.name));
    }
    m_ifResolvedColumn = columnOf(apart.names, "ifresolved"_L1);
    m_reading.emplace(m_connection.database().engine(), apart, noteTables(customer),
                      store::SlicedReading::Columns::Given);
}

bool NoteReport::GetExportContent()
{
    bool more = false;
    const bool read = m_failed || m_log.trap("GetExportContent"_L1, [&] {
        more = m_reading->readOn([this](const store::Row &row) { append(row); });
    });
    m_failed = m_failed || !read;
    if (!more) {
        m_connection.close();
    }
    return more;
}

void NoteReport::append(const store::Row &row)
{
    ReportLines::Entry entry;
    for (size_t place = 0; place < textColumns.size(); ++place) {
        entry.*textColumns[place].field = row.text(m_textColumns[place]);
    }
    entry.ifResolved = row.integer(m_ifResolvedColumn) != 0;
    m_lines.append(entry, m_lines.beginsCall(entry) ? content(entry.callId) : QString());
}

QString NoteReport::content(const QString &callId)
{
    constexpr int callContent = 4; // the order of the table's columns is part of the format
    QString content;
    m_connection.database().forEachRow(contentQuery(callId),
                                       [&](const store::Row &row) { content = row.text(callContent); });
    return content;
}

} // namespace notes
