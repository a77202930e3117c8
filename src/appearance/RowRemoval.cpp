#include "appearance/RowRemoval.h"

#include "core/TextUtilities.h"

#include <QElapsedTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace appearance {

RowRemoval::RowRemoval(const Context &context, const Bar &bar) : m_context(context), m_bar(bar)
{
    m_turns.setSingleShot(true);
    connect(&m_turns, &QTimer::timeout, this, &RowRemoval::workOn);
    connect(&bar.undo, &QPushButton::clicked, this, &RowRemoval::putBack);
    showBar();
}

void RowRemoval::remove(const std::vector<qint64> &numbers)
{
    if (m_turns.isActive()) {
        return;
    }
    m_restoring = false;
    m_done = 0;
    m_deleted.emplace_back();
    m_toRemove.assign(numbers.rbegin(), numbers.rend());
    workOn();
}

void RowRemoval::putBack()
{
    if (m_turns.isActive() || m_deleted.empty()) {
        return;
    }
    m_restoring = true;
    m_done = 0;
    workOn();
}

void RowRemoval::workOn()
{
    constexpr qint64 turnMs = 8;
    QElapsedTimer timer;
    timer.start();
    const auto isDone = [this] { return m_restoring ? m_deleted.back().empty() : m_toRemove.empty(); };
    bool works = true;
    while (works && !isDone() && timer.elapsed() < turnMs) {
        works = m_restoring ? restoreNext() : removeNext();
        m_done += works ? 1 : 0;
    }
    if (works && !isDone()) {
        m_turns.start(0);
    } else {
        end(works);
    }
}

bool RowRemoval::removeNext()
{
    const qint64 number = m_toRemove.back();
    const int row = m_context.rows.rowOf(number);
    std::optional<store::DeletedRow> deleted = m_context.rows.deleteRow(row);
    if (!deleted) {
        return false;
    }
    m_toRemove.pop_back();
    m_deleted.back().push_back(std::move(*deleted));
    Q_EMIT removed(static_cast<qint32>(number), row);
    return true;
}

bool RowRemoval::restoreNext()
{
    std::vector<store::DeletedRow> &rows = m_deleted.back();
    const std::optional<qint64> number = m_context.rows.putBack(rows.back());
    if (!number) {
        return false;
    }
    rows.pop_back();
    Q_EMIT restored(static_cast<qint32>(*number));
    return true;
}

void RowRemoval::end(bool whole)
{
    m_toRemove.clear();
    if (m_deleted.back().empty()) {
        m_deleted.pop_back();
    }
    showBar();
    if (m_restoring) {
        Q_EMIT restoringEnded(m_done, whole);
    } else {
        Q_EMIT removalEnded(m_done, whole);
    }
}

// Several rows, and one without a name, are called by their number.
void RowRemoval::showBar()
{
    m_bar.frame.setVisible(!m_deleted.empty());
    if (!m_deleted.empty()) {
        const std::vector<store::DeletedRow> &rows = m_deleted.back();
        const QString name = rows.size() == 1 ? nameOf(rows.front()) : QString();
        const QString shown = name.isEmpty() ? QString::number(rows.size()) : name;
        m_bar.text.setText(m_context.texts.Lms(u"RowsDeleted"_s).replace(u"%1"_s, core::isolated(shown)));
    }
}

QString RowRemoval::nameOf(const store::DeletedRow &row) const
{
    QString name;
    for (const QString &nameField : m_context.nameFields) {
        for (const auto &[field, value] : row.fields) {
            const bool isName = name.isEmpty() && field.compare(nameField, Qt::CaseInsensitive) == 0;
            name = isName ? core::shownText(value.toString()).trimmed() : name;
        }
    }
    return name;
}

} // namespace appearance
