#pragma once

#include "core/Background.h"
#include "imports/RowReading.h"

#include <QHash>

#include <atomic>

namespace imports {

/// What an import has come to, or would come to.
struct ImportReport
{
    qint64 added = 0;
    qint64 changed = 0;
    qint64 kept = 0; ///< on file already, and left as they are
    QList<RefusedRow> refused = {};
    QHash<QString, QString> renamed = {}; ///< rows whose first name has changed, and to what
    bool isCancelled = false;             ///< nothing was written

    bool operator==(const ImportReport &) const = default;
};

/// The import of a list, on a thread of its own and from a connection of its own, or what it would do. All of
/// it is written in one transaction, or nothing.
class ListImport
{
public:
    enum class Mode { Check, Write };
    /// Keeps the desk as it is, on the import's thread, before anything is written; returns soon once `ended`
    /// says so. Throws core::Error, and nothing is imported.
    using CopyDesk = std::function<void(const std::function<bool()> &ended)>;

    ListImport(
        const ListTarget &target, const QString &path, const ListPlan &plan, Mode mode,
        const CopyDesk &copyDesk = [](const std::function<bool()> &) {});
    /// Cancels it, and waits for its end.
    ~ListImport() { cancel(); }
    Q_DISABLE_COPY_MOVE(ListImport)

    /// Ends it soon, with nothing written; too late once all of it is.
    void cancel() { m_cancelled = true; }
    bool isDone() const { return m_work.isDone(); }
    int perMille() const { return m_perMille; }
    /// Once it is done, and once only. Throws core::Error where it failed, with nothing written.
    ImportReport take() { return m_work.take(); }

private:
    std::atomic<bool> m_cancelled = false;
    std::atomic<int> m_perMille = 0;
    core::Background<ImportReport> m_work; ///< last, since it works with what is above
};

} // namespace imports
