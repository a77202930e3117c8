#include "oldfiles/OldDatabase.h"

#include <QFile>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace oldfiles {

namespace {

constexpr quint32 cataloguePage = 2;

// Puts the table's name in front of the description of its damage.
core::Error damageOf(const QString &table, const Damage &damage)
{
    return core::Error(0, u"the table %1 is damaged: "_s.arg(table) + damage.description());
}

// The columns of the catalogue that are read, in this order. Damage to its others does no harm.
enum CatalogueColumn { Id, Name, Type, Flags };

TableDefinition catalogueOf(const Pages &pages)
{
    TableDefinition catalogue = readDefinition(pages, cataloguePage);
    QList<Column> columns;
    for (const QString &name : {u"Id"_s, u"Name"_s, u"Type"_s, u"Flags"_s}) {
        const auto found = std::ranges::find_if(catalogue.columns, [&](const Column &column) {
            return column.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (found == catalogue.columns.end()) {
            throw Damage(u"it has no column "_s + name);
        }
        columns.append(*found);
    }
    catalogue.columns = columns;
    return catalogue;
}

QByteArray wholeFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw core::Error(file.error(), file.errorString() + u": "_s + path);
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError || bytes.size() != file.size()) {
        throw core::Error(file.error(), file.errorString() + u": "_s + path);
    }
    return bytes;
}

} // namespace

OldDatabase::OldDatabase(QByteArray file) : m_file(std::move(file)), m_pages(m_file)
{
    try {
        readCatalogue();
    } catch (const Damage &damage) {
        throw damageOf(u"MSysObjects"_s, damage);
    }
}

OldDatabase OldDatabase::fromFile(const QString &path)
{
    return OldDatabase(wholeFile(path));
}

void OldDatabase::readCatalogue()
{
    const TableDefinition catalogue = catalogueOf(m_pages);
    QSet<quint32> seen;
    TableRows(m_pages, catalogue).forEach([&](const QVariantList &row) {
        addObject(row.at(Name).toString(), row.at(Type).toInt(), static_cast<quint32>(row.at(Flags).toInt()),
                  static_cast<quint32>(row.at(Id).toInt()), seen);
    });
}

void OldDatabase::addObject(const QString &name, int type, quint32 flags, quint32 id, QSet<quint32> &seen)
{
    constexpr int localTable = 1;
    constexpr std::array linkedTables = {4, 6};
    constexpr quint32 systemTable = 0x80000002;
    constexpr quint32 pageBits = 0x00FFFFFF;
    const bool users = (flags & systemTable) == 0 && !name.startsWith("MSys"_L1) && !name.startsWith(u'~');
    if (users && std::ranges::find(linkedTables, type) != linkedTables.end()) {
        throw core::Error(0, u"the table %1 is a link to another file; its rows stand there"_s.arg(name));
    }
    if (type != localTable || !users) {
        return;
    }
    const quint32 page = id & pageBits;
    if (name.isEmpty() || seen.contains(page)) {
        throw Damage(u"two tables stand in one place"_s);
    }
    seen.insert(page);
    try {
        m_tables.append({name, readDefinition(m_pages, page)});
    } catch (const Damage &damage) {
        throw damageOf(name, damage);
    }
}

void OldDatabase::forEachRow(const Table &table, const std::function<void(const QVariantList &)> &visit) const
{
    try {
        TableRows(m_pages, table.definition).forEach(visit);
    } catch (const Damage &damage) {
        throw damageOf(table.name, damage);
    }
}

bool isOldDatabase(const QString &path)
{
    constexpr qint64 enough = 32;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && hasJetSignature(file.read(enough));
}

} // namespace oldfiles
