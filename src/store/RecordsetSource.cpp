#include "store/RecordsetSource.h"

#include "store/Select.h"
#include "store/TableSource.h"

using namespace Qt::StringLiterals;

namespace store {

namespace {

[[noreturn]] void refuseWriting()
{
    throw core::Error(0, u"the rows of this query cannot be sought or changed"_s);
}

// The finished rows of a join or a computing query, all kept.
class ResultSource : public Recordset::Source
{
public:
    explicit ResultSource(Statement &statement) : m_names(statement.columnNames())
    {
        while (statement.step()) {
            m_rows.push_back(statement.row());
        }
    }
    const QStringList &names() const override { return m_names; }
    qint64 count() override { return static_cast<qint64>(m_rows.size()); }
    qint64 position() override { return m_position; }
    void standOn(qint64 position) override { m_position = position; }
    const QVariantList *row() override
    {
        return m_position >= 0 && m_position < count() ? &m_rows[static_cast<size_t>(m_position)] : nullptr;
    }

private:
    QStringList m_names;
    std::vector<QVariantList> m_rows;
    qint64 m_position = 0;
};

} // namespace

void Recordset::Source::setIndex(const QString &)
{
    refuseWriting();
}

bool Recordset::Source::seek(const QVariant &)
{
    refuseWriting();
}

qint64 Recordset::Source::reserveNumber()
{
    refuseWriting();
}

void Recordset::Source::insert(const QList<Field> &)
{
    refuseWriting();
}

void Recordset::Source::update(const QList<Field> &)
{
    refuseWriting();
}

void Recordset::Source::remove()
{
    refuseWriting();
}

std::unique_ptr<Recordset::Source> openSource(const std::shared_ptr<Engine> &engine,
                                              const QString &tableOrSelect, const QVariantList &bound)
{
    const SqlTokens words(tableOrSelect);
    if (words.empty() || !words[0].is("select"_L1)) {
        return std::make_unique<TableSource>(engine, Select::wholeTable(tableOrSelect), bound);
    }
    const std::optional<Select> select = parseSelect(words);
    if (select && select->tables.size() == 1) {
        return std::make_unique<TableSource>(engine, *select, bound);
    }
    const std::unique_ptr<Statement> statement = engine->prepare(words);
    statement->bind(bound);
    return std::make_unique<ResultSource>(*statement);
}

} // namespace store
