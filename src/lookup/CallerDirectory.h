#pragma once

#include "core/Callers.h"
#include "core/Paths.h"
#include "core/RunLog.h"
#include "lookup/NumberIndex.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <optional>

namespace lookup {

/// Everything that knows who is calling: the numbers, and what a call shows of a customer. Reads the files at
/// start, follows every save of this desk at once and those of all others within seconds, and tries again
/// while the customer file cannot be read.
class CallerDirectory : public QObject, public core::Callers
{
    Q_OBJECT

public:
    /// All must outlive the directory.
    CallerDirectory(const core::Paths &paths, core::RunLog &log, const core::CodePage &codePage);

    /// Reads the numbers of phone book and customers, unless there are no customers at all; the rest of a
    /// large desk in the turns of the event loop that follow. From now on the customer file is followed.
    void load();
    /// The repairs of the customer file, and the tables and indexes that it may lack. What another program's
    /// lock prevents, and what takes longer than a moment, is done later.
    void fixCustomers();
    void addCallNoteTables();

    /// Looks whether the customer file was changed; if so, it is read again, in the turns that follow.
    void look();
    /// This desk has saved a customer, who now stands in the file like this, or deleted one: the next call
    /// finds him, or nobody.
    void customerSaved(qint32 sn, const CustomerFacts &onFile);
    void customerDeleted(qint32 sn);

    /// A phone book entry was saved: the existence checks know its numbers at once. Calls are told by the
    /// numbers of customers alone.
    void entrySaved(qint32 sn, const QString &numbers) { m_index.entrySaved(sn, numbers); }

    /// Many entries of the phone book were written at once: it is read again, in the turns that follow.
    void entriesImported() { goOn(m_index.LoadPhoneNumberSNArray()); }

    NumberIndex &numbers() { return m_index; }
    /// All customers could be read.
    bool isAvailable() const { return m_available; }

    /// As it stands in the file; empty for nobody.
    QString customerName(qint32 sn) const;

    bool areKnown() const override { return m_index.knowsCustomers(); }
    bool callerPopsUp(QStringView number, QStringView otherNumber) const override;
    void completeFromDesk(core::CallRecord &record) const override;

Q_SIGNALS:
    /// The numbers are read for the first time, so calls had better wait a moment; or that reading has ended.
    void loading(bool begins);
    void availableChanged(bool available);
    /// The customers were read, for the first time or again.
    void customersRead();

private:
    void turn();
    void readCustomers();
    void reloadPhoneBook();
    void follow(bool taken);
    void goOn(bool read = true);
    void customersEnded();
    void setAvailable(bool available);

    const core::Paths &m_paths;
    core::RunLog &m_log;
    NumberIndex m_index;
    QTimer m_next;
    std::optional<QByteArray> m_state; ///< of the customer file when its last reading began
    bool m_isFixed = false;
    bool m_hasMoreToFix = false;
    bool m_isLoading = false;
    bool m_readsCustomers = false;
    bool m_available = true;
};

} // namespace lookup
