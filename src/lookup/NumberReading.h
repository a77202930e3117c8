#pragma once

#include "core/CodePage.h"
#include "core/RunLog.h"
#include "lookup/KnownCustomers.h"
#include "lookup/NumberEntries.h"
#include "store/Database.h"
#include "store/Pace.h"

#include <QStringList>

#include <chrono>
#include <optional>
#include <string>

namespace lookup {

/// The table that holds callers, and what a call asks of a row of it.
struct CallerTable
{
    QString file;
    QString name;
    QStringList numberColumns; ///< the numbers of a row are those of these, in this order
    bool isCustomers = false;  ///< then the rows also hold what a call shows of a customer

    /// The select list that the functions below take apart: the row's key, its SN, and the columns.
    QString columns() const;
    /// Puts the row's numbers text into `utf8`: what its columns hold, with commas between them.
    void readNumbers(std::string &utf8, const store::Row &row) const;
    KnownCustomers::Row customer(const store::Row &row) const;
};

/// The reading of one table's callers, cut into pieces of a few milliseconds, so that a desk of a million
/// customers keeps nothing else waiting. Between two pieces the file is not locked. Around damaged pages it
/// reads on.
class NumberReading
{
public:
    enum class Start { AtOnce, InBetween }; ///< with nothing else to be done, or while the operator works
    enum class Progress { More, Locked, Ended };

    /// Throws core::Error where nothing of the file can be read.
    NumberReading(core::RunLog &log, const core::CodePage &codePage, CallerTable table, Start start);

    /// Reads one piece; while another program has locked the file, nothing. Throws core::Error, also when no
    /// row holds a number.
    Progress readOn();

    /// What was read; once, after the last piece.
    NumberEntries takeNumbers() { return std::move(m_entries); }
    KnownCustomers takeCustomers() { return std::move(m_customers); }
    /// Why some rows are missing in it.
    const std::optional<core::Error> &damage() const { return m_damage; }
    /// Some customer has no pop-up flag.
    bool hasUnflagged() const { return m_hasUnflagged; }

private:
    void readRows();
    void readPiece();
    void expectRest(qint64 read);
    void append(const store::Row &row);
    void appendNumbers(qint32 sn);
    bool skipDamage();
    bool canReadBehind(qint64 key);
    void finishRows();

    core::RunLog &m_log;
    const core::CodePage &m_codePage;
    CallerTable m_table;
    bool m_waits; ///< for another program's lock
    store::Database m_database;
    store::Pace m_pace;
    qint64 m_lastKey;
    bool m_expects = false; ///< room for all rows was made
    bool m_hasRows = false;
    bool m_rowsEnded = false;
    bool m_hasUnflagged = false;
    int m_gaps = 0;
    std::optional<core::Error> m_damage;
    std::string m_numbers; ///< of the row at hand
    NumberEntries m_entries;
    KnownCustomers m_customers;
};

} // namespace lookup
