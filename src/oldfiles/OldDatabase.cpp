#include "oldfiles/OldDatabase.h"

#include <QFile>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace oldfiles {

namespace {

constexpr quint32 cataloguePage = 2;

/// Which table is damaged, in front of how.
core::Error damageOf(const QString &table, const Damage &damage)
{
    return core::Error(0, u"the table %1 is damaged: "_s.arg(table) + damage.description());
}

/// Where the columns that are read stand in the catalogue.
struct CatalogueColumns
{
    explicit CatalogueColumns(const QList<Column> &columns)
        : id(placeOf(columns, u"Id"_s)), name(placeOf(columns, u"Name"_s)), type(placeOf(columns, u"Type"_s)),
          flags(placeOf(columns, u"Flags"_s))
    {}
    static qsizetype placeOf(const QList<Column> &columns, const QString &name)
    {
        for (qsizetype i = 0; i < columns.size(); ++i) {
            if (columns.at(i).name.compare(name, Qt::CaseInsensitive) == 0) {
                return i;
            }
        }
        throw Damage(u"it has no column "_s + name);
    }
    qsizetype id;
    qsizetype name;
    qsizetype type;
    qsizetype flags;
};

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
    const TableDefinition catalogue = readDefinition(m_pages, cataloguePage);
    const CatalogueColumns at(catalogue.columns);
    QSet<quint32> seen;
    TableRows(m_pages, catalogue).forEach([&](const QVariantList &row) {
        addObject(row.at(at.name).toString(), row.at(at.type).toInt(),
                  static_cast<quint32>(row.at(at.flags).toInt()), static_cast<quint32>(row.at(at.id).toInt()),
                  seen);
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
