#include "store/SlicedSource.h"

#include <QElapsedTimer>

#include <sqlite3.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr qint64 lastKeyOfAll = std::numeric_limits<qint64>::max();

/// The condition behind the "where" that the tail begins with, in brackets.
QString condition(const TableSelect &search)
{
    constexpr qsizetype where = 5;
    return u'(' + search.tail.mid(where) + u')';
}

TableSelect wholeTable(const TableSelect &search)
{
    return {search.table, search.columns, {}, false};
}

} // namespace

// The words as they stand are tried first: a bracket too many in them must not close ours.
SlicedSource::SlicedSource(const std::shared_ptr<Database::Handle> &handle, const TableSelect &search)
    : TableSource((static_cast<void>(handle->prepare(search.inOrder())), handle), wholeTable(search), {}),
      m_sliceEnd(handle->prepare(
          u"select rowid from [%1] where rowid>? order by rowid limit 1 offset ?"_s.arg(search.table))),
      m_slice(handle->prepare(u"select rowid from [%1] where "_s.arg(search.table) + condition(search) +
                              u" and rowid>? and rowid<=? order by rowid"_s))
{
    appendKeys({});
}

bool SlicedSource::readOn(std::chrono::milliseconds time)
{
    QElapsedTimer timer;
    timer.start();
    while (!m_ended && timer.elapsed() < time.count()) {
        readSlice();
    }
    return m_ended;
}

qint64 SlicedSource::endOfSlice()
{
    const StatementReset reset(m_sliceEnd);
    m_sliceEnd.bind({m_lastKey, m_sliceRows});
    return m_sliceEnd.step() ? sqlite3_column_int64(m_sliceEnd.raw(), 0) : lastKeyOfAll;
}

// How many rows make a slice depends on how long their texts are.
void SlicedSource::readSlice()
{
    constexpr qint64 sliceNs = 8'000'000;
    QElapsedTimer timer;
    timer.start();
    const qint64 end = endOfSlice();
    std::vector<qint64> keys;
    {
        const StatementReset reset(m_slice);
        m_slice.bind({m_lastKey, end});
        while (m_slice.step()) {
            keys.push_back(sqlite3_column_int64(m_slice.raw(), 0));
        }
    }
    appendKeys(keys);
    m_lastKey = end;
    m_ended = end == lastKeyOfAll;
    m_sliceRows =
        std::clamp<qint64>(m_sliceRows * sliceNs / std::max<qint64>(timer.nsecsElapsed(), 1), 20, 4000);
}

} // namespace store
