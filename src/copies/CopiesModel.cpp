#include "copies/CopiesModel.h"

#include <QLocale>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace copies {

namespace {

const QStringList &headingKeys()
{
    static const QStringList keys = {u"CopyDate"_s, u"CopyReason"_s, u"CopySize"_s, u"CopyRows"_s,
                                     u"CopyCheck"_s};
    return keys;
}

QString reasonKey(Reason reason)
{
    switch (reason) {
    case Reason::Asked:
        return u"CopyAsked"_s;
    case Reason::BeforeRestore:
        return u"CopyBeforeRestore"_s;
    case Reason::BeforeImport:
        return u"CopyBeforeImport"_s;
    default:
        return u"CopyOfDay"_s;
    }
}

} // namespace

void CopiesModel::setCopies(const QList<Copy> &copies)
{
    beginResetModel();
    m_copies = copies;
    endResetModel();
}

const Copy *CopiesModel::at(int row) const
{
    return row >= 0 && row < m_copies.size() ? &m_copies.at(row) : nullptr;
}

int CopiesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_copies.size());
}

int CopiesModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(headingKeys().size());
}

QVariant CopiesModel::data(const QModelIndex &index, int role) const
{
    const Copy *copy = at(index.row());
    return copy != nullptr && role == Qt::DisplayRole ? text(*copy, index.column()) : QVariant();
}

QString CopiesModel::text(const Copy &copy, int column) const
{
    const QString &key = headingKeys().at(column);
    if (key == "CopyDate"_L1) {
        return shownTime(copy);
    }
    if (key == "CopyReason"_L1) {
        return m_texts.Lms(reasonKey(copy.reason));
    }
    if (key == "CopySize"_L1) {
        return QLocale::c().formattedDataSize(copy.bytes(), 1, QLocale::DataSizeTraditionalFormat);
    }
    if (key == "CopyRows"_L1) {
        return QString::number(copy.rows());
    }
    return m_texts.Lms(copy.isWhole ? u"CopyWhole"_s : u"CopyNotWhole"_s);
}

QVariant CopiesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole
               ? QVariant(m_texts.Lms(headingKeys().value(section)))
               : QAbstractTableModel::headerData(section, orientation, role);
}

} // namespace copies
