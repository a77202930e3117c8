#pragma once

#include <QString>
#include <QVariant>

#include <memory>

namespace store {

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

    QStringList fieldNames() const;
    /// The current row's field; a null QVariant for Null. Throws core::Error for an unknown name or without a
    /// row.
    QVariant value(const QString &field) const;
    QVariant value(int column) const;

    /// Chooses the index that Seek uses, by its given name ("SN", "CustomerName", "HelpID").
    void setIndex(const QString &name);
    /// Moves to the first row whose index key equals `key`; false (and no current row) when there is none.
    bool Seek(const QVariant &key);

    void AddNew();
    void Edit();
    void setValue(const QString &field, const QVariant &value);
    /// The auto-number that AddNew has reserved, before the row is written.
    /// Writes the row of AddNew or Edit, every value bound. After a failure nothing is written and Update may
    /// be called again.
    void Update();
    void Delete();

private:
    std::unique_ptr<Source> m_source;
};

} // namespace store
