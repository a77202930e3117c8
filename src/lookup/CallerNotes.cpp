#include "lookup/CallerNotes.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr std::chrono::milliseconds behindTheCall{150}; // calls of a storm come and go without any reading
constexpr std::chrono::milliseconds betweenSlices{8};   // as long as a slice: the operator works meanwhile
constexpr std::chrono::seconds untilUnlocked{2};
constexpr int dateSize = 10; // of "YYYY-MM-DD HH:MM:SS"

} // namespace

CallerNotes::CallerNotes(const core::Paths &paths, core::RunLog &log) : m_paths(paths), m_log(log)
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &CallerNotes::turn);
}

void CallerNotes::read(qint32 sn)
{
    drop();
    m_sn = sn;
    m_next.start(behindTheCall);
}

void CallerNotes::drop()
{
    m_next.stop();
    m_reading.reset();
    m_database.reset();
    m_summary = {};
}

void CallerNotes::turn()
{
    m_log.trap("CallerNotes"_L1, [this] {
        try {
            if (readOn()) {
                m_next.start(betweenSlices);
                return;
            }
            const Summary summary = m_summary;
            drop();
            Q_EMIT isRead(summary);
        } catch (const core::Error &error) {
            drop();
            if (!store::tellsOfLock(error)) {
                throw;
            }
            m_next.start(untilUnlocked);
        }
    });
}

bool CallerNotes::readOn()
{
    const store::NoWaiting atOnce;
    if (!m_reading) {
        open();
    }
    return m_reading && m_reading->readOn([this](const store::Row &row) {
        m_summary.lastDate = std::max(m_summary.lastDate, row.text(0).left(dateSize));
        m_summary.open += row.integer(1) == 0 ? 1 : 0;
    });
}

// Notes are kept under the customer's name on file, which may differ from the name in the call. Without the
// file or its tables of notes there are no notes.
void CallerNotes::open()
{
    if (!QFileInfo::exists(m_paths.CustomerFile)) {
        return;
    }
    m_database.emplace(m_paths.CustomerFile, store::Database::Mode::ReadOnly);
    std::optional<QString> name;
    m_database->forEachBoundRow(u"select CustomerName from customer where SN=?"_s, {m_sn},
                                [&](const store::Row &row) { name = row.text(0); });
    const QStringList tables = m_database->tableNames();
    if (!name || !tables.contains(u"CallInfo"_s) || !tables.contains(u"CustomerRequest"_s)) {
        return;
    }
    const QString select = u"select CallInfo.[DateAndTime],CustomerRequest.[IfResolved]"
                           " from CustomerRequest,CallInfo where CallInfo.CallID = CustomerRequest.CallID"_s;
    const store::JoinTables notes{.details = u"CustomerRequest"_s,
                                  .masters = u"CallInfo"_s,
                                  .group = u"CustomerName"_s,
                                  .key = u"CallID"_s,
                                  .onlyGroup = name};
    m_reading.emplace(m_database->engine(), store::selectOf(select, 2), notes,
                      store::SlicedReading::Columns::Given);
}

} // namespace lookup
