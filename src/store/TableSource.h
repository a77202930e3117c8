#pragma once

#include "store/RecordsetSource.h"
#include "store/Select.h"

#include <limits>
#include <optional>
#include <vector>

namespace store {

/// The rows of one table, or a choice of them, known by their keys: a row is read when the cursor stands on
/// it, so a table of any size opens at once. The keys themselves are read when a count or a move first needs
/// them; a row found by Seek needs none.
class TableSource : public Recordset::Source
{
public:
    TableSource(std::shared_ptr<Engine> engine, Select select, QVariantList bound);

    const QStringList &names() const override { return m_names; }
    qint64 count() override;
    qint64 position() override;
    void standOn(qint64 position) override;
    const QVariantList *row() override;
    /// Stands on the row of that key, wherever it is; nothing: on none.
    void standOnKey(std::optional<qint64> key);
    /// Throws core::Error where it stands on no row.
    qint64 currentKey();

    void setIndex(const QString &name) override;
    bool seek(const QVariant &key) override;
    QString autoNumber() const override;
    qint64 reserveNumber() override;
    void insert(const QList<Field> &fields) override;
    void update(const QList<Field> &fields) override;
    void remove() override;

private:
    void readKeys();
    std::vector<qint64>::iterator placeOf(qint64 key);
    QString bracketedTable() const { return bracketed(m_select.table()); }

    std::shared_ptr<Engine> m_engine; // before the statements, which must go first
    Select m_select;
    QVariantList m_bound;
    std::unique_ptr<Statement> m_rowByKey;
    QStringList m_names;
    std::unique_ptr<Statement> m_seek;
    std::optional<std::vector<qint64>> m_keys;
    std::optional<qint64> m_position;                      ///< nothing: not asked for yet, or found by Seek
    std::optional<qint64> m_key;                           ///< of the row at hand
    qint64 m_lastKey = std::numeric_limits<qint64>::min(); ///< of the row last stood on
    std::optional<QVariantList> m_row;
};

} // namespace store
