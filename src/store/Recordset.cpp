#include "store/Recordset.h"

#include "core/Error.h"
#include "store/RecordsetSource.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

qsizetype placeOfField(const QStringList &names, const QString &field)
{
    const auto found = std::ranges::find_if(
        names, [&](const QString &name) { return name.compare(field, Qt::CaseInsensitive) == 0; });
    return found != names.end() ? found - names.begin() : -1;
}

Recordset::Recordset(std::unique_ptr<Source> source) : m_source(std::move(source)) {}

Recordset::~Recordset() = default;
Recordset::Recordset(Recordset &&) noexcept = default;
Recordset &Recordset::operator=(Recordset &&) noexcept = default;

bool Recordset::BOF() const
{
    return position() < 0 || RecordCount() == 0;
}

bool Recordset::EOFile() const
{
    return position() >= RecordCount();
}

qint64 Recordset::RecordCount() const
{
    return m_source->count();
}

qint64 Recordset::position() const
{
    return RecordCount() == 0 ? 0 : m_source->position();
}

void Recordset::moveTo(qint64 position)
{
    m_pending = Pending::Nothing;
    m_betweenRows = false;
    m_source->standOn(std::clamp<qint64>(position, -1, RecordCount()));
}

void Recordset::MoveFirst()
{
    moveTo(0);
}

void Recordset::MoveLast()
{
    moveTo(RecordCount() - 1);
}

void Recordset::MoveNext()
{
    moveTo(position() + (m_betweenRows ? 0 : 1));
}

void Recordset::MovePrevious()
{
    moveTo(position() - 1);
}

void Recordset::Move(qint64 rows)
{
    moveTo(position() + rows);
}

QStringList Recordset::fieldNames() const
{
    return m_source->names();
}

int Recordset::columnOf(const QString &field) const
{
    const qsizetype place = placeOfField(m_source->names(), field);
    if (place < 0) {
        throw core::Error(0, u"no such field: "_s + field);
    }
    return static_cast<int>(place);
}

QVariant Recordset::value(const QString &field) const
{
    return value(columnOf(field));
}

QVariant Recordset::value(int column) const
{
    const QString name = m_source->names().value(column);
    if (const QVariant *pending = pendingValue(name)) {
        return *pending;
    }
    if (m_pending == Pending::NewRow) {
        return newRowValue(name);
    }
    const QVariantList *row = m_betweenRows ? nullptr : m_source->row();
    if (row == nullptr || column < 0 || column >= row->size()) {
        throw core::Error(0, u"no current row, or no such field: "_s + name);
    }
    return row->at(column);
}

const QVariant *Recordset::pendingValue(const QString &name) const
{
    const auto found = std::ranges::find(m_fields, name, &std::pair<QString, QVariant>::first);
    return m_pending != Pending::Nothing && found != m_fields.end() ? &found->second : nullptr;
}

QVariant Recordset::newRowValue(const QString &name) const
{
    if (name.isEmpty() || name != m_source->autoNumber()) {
        return {};
    }
    m_fields.append({name, m_source->reserveNumber()});
    return m_fields.last().second;
}

void Recordset::setIndex(const QString &name)
{
    m_source->setIndex(name);
}

bool Recordset::Seek(const QVariant &key)
{
    m_pending = Pending::Nothing;
    m_betweenRows = false;
    return m_source->seek(key);
}

void Recordset::AddNew()
{
    m_pending = Pending::NewRow;
    m_fields.clear();
}

void Recordset::Edit()
{
    if (m_betweenRows || m_source->row() == nullptr) {
        throw core::Error(0, u"no current row to edit"_s);
    }
    m_pending = Pending::Change;
    m_fields.clear();
}

void Recordset::setValue(const QString &field, const QVariant &value)
{
    if (m_pending == Pending::Nothing) {
        throw core::Error(0, u"neither AddNew nor Edit was called before "_s + field);
    }
    const QString name = m_source->names().at(columnOf(field));
    const auto found = std::ranges::find(m_fields, name, &std::pair<QString, QVariant>::first);
    if (found != m_fields.end()) {
        found->second = value;
    } else {
        m_fields.append({name, value});
    }
}

void Recordset::setFields(const QList<core::FieldEdit> &edits)
{
    for (const core::FieldEdit &edit : edits) {
        if (!edit.isTakenOver() && value(edit.column) != edit.wanted) {
            setValue(edit.column, edit.wanted);
        }
    }
}

void Recordset::Update()
{
    if (m_pending == Pending::Nothing) {
        throw core::Error(0, u"neither AddNew nor Edit was called before Update"_s);
    }
    if (m_pending == Pending::NewRow) {
        m_source->insert(m_fields);
        m_betweenRows = false;
    } else {
        m_source->update(m_fields);
    }
    m_pending = Pending::Nothing;
}

void Recordset::Delete()
{
    if (m_betweenRows) {
        throw core::Error(0, u"no current row to delete"_s);
    }
    m_source->remove();
    m_pending = Pending::Nothing;
    m_betweenRows = true;
}

} // namespace store
