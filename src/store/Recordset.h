#pragma once

#include "core/RecordSave.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <utility>

namespace store {

/// Where a field stands among others, whatever its letter case; -1 where it does not.
qsizetype placeOfField(const QStringList &names, const QString &field);

/// A cursor over the rows of a table or of a query, opened by Database::OpenRecordset. Field names are
/// matched without regard to case. Every member throws core::Error where the database fails.
class Recordset
{
public:
    class Source; // the rows behind the cursor
    explicit Recordset(std::unique_ptr<Source> source);
    ~Recordset();
    Recordset(Recordset &&) noexcept;
    Recordset &operator=(Recordset &&) noexcept;

    bool BOF() const;    ///< before the first row, or no rows
    bool EOFile() const; ///< behind the last row, or no rows
    /// 0 exactly when there are no rows.
    qint64 RecordCount() const;
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    /// Moves by so many rows, at most to before the first or behind the last.
    void Move(qint64 rows);

    QStringList fieldNames() const;
    /// The current row's field, or what setValue has given it; a null QVariant for Null. Between AddNew and
    /// Update the auto-number field gives the number that the new row will have: asking reserves it. Throws
    /// core::Error for an unknown name or without a row.
    QVariant value(const QString &field) const;
    QVariant value(int column) const;

    /// Chooses the index that Seek uses, by its given name ("SN", "CustomerName", "HelpID").
    void setIndex(const QString &name);
    /// Moves to the first row whose index key equals `key`; false (and no current row) when there is none.
    bool Seek(const QVariant &key);

    void AddNew();
    void Edit();
    void setValue(const QString &field, const QVariant &value);
    /// Sets what an editor wants, but for what is taken over and what the row holds already.
    void setFields(const QList<core::FieldEdit> &edits);
    /// Writes the row of AddNew or Edit, every value bound, and stands on it. After a failure nothing is
    /// written and Update may be called again.
    void Update();
    /// Deletes the current row; the cursor then stands between its neighbours.
    void Delete();

private:
    enum class Pending { Nothing, NewRow, Change };

    int columnOf(const QString &field) const;
    const QVariant *pendingValue(const QString &name) const;
    QVariant newRowValue(const QString &name) const;
    void moveTo(qint64 position);
    qint64 position() const;

    std::unique_ptr<Source> m_source;
    Pending m_pending = Pending::Nothing;
    mutable QList<std::pair<QString, QVariant>> m_fields; ///< what Update will write
    bool m_betweenRows = false;                           ///< the row that the cursor stood on was deleted
};

} // namespace store
