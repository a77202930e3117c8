#include "phonebook/DataPhonebook.h"

#include "core/TextUtilities.h"

using namespace Qt::StringLiterals;

namespace phonebook {

DataPhonebook::DataPhonebook(core::RunLog &log, const core::TextLookup &texts, QObject *parent)
    : ResultModel(log, "DataPhonebook"_L1, parent), m_texts(texts)
{
    setObjectName(u"DataPhonebook"_s);
    setEditable(true);
    setLeadingFields({u"Telno"_s, u"SimpleDes"_s, u"IfVip"_s, u"IfInBlackList"_s, u"DetailDes"_s});
    setHeading(u"Telno"_s, texts.Lms(u"Telno"_s));
    setHeading(u"SimpleDes"_s, texts.Lms(u"SimpleDes"_s));
    setHeading(u"IfVip"_s, texts.Lms(u"IfVip"_s));
    setHeading(u"IfInBlackList"_s, texts.Lms(u"IfInBlackList"_s));
    setHeading(u"DetailDes"_s, texts.Lms(u"DetailDes"_s));
}

bool DataPhonebook::isMark(int column) const
{
    return column >= 0 && (column == columnOf(u"IfVip"_s) || column == columnOf(u"IfInBlackList"_s));
}

QString DataPhonebook::markWord(const QString &letter) const
{
    switch (markState(letter)) {
    case Qt::Checked:
        return m_texts.Lms(u"Yes"_s);
    case Qt::PartiallyChecked:
        return m_texts.Lms(u"MarkUndecided"_s);
    case Qt::Unchecked:
        break;
    }
    return m_texts.Lms(u"No"_s);
}

QVariant DataPhonebook::data(const QModelIndex &index, int role) const
{
    QVariant value = ResultModel::data(index, role);
    const bool asWord = role == Qt::DisplayRole && index.isValid() && isMark(index.column());
    return asWord ? markWord(value.toString()) : value;
}

// Leaving an untouched cell writes nothing, even if it shows an empty text where the file has Null.
bool DataPhonebook::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const bool isNumber = index.column() == columnOf(u"Telno"_s);
    const QString text = isNumber ? value.toString().trimmed() : value.toString();
    if (role != Qt::EditRole || text == data(index, Qt::EditRole).toString()) {
        return false;
    }
    if (isNumber && text.isEmpty()) {
        Q_EMIT blankRefused();
        return false;
    }
    const PhoneBookEntry loaded = entryAt(index.row());
    const SavedEntry saved = write(index.row(), loaded, withField(loaded, fieldAt(index.column()), text));
    if (saved.gone || !saved.disputed.isEmpty()) {
        Q_EMIT changedElsewhere(index, loaded, text);
    } else if (!saved.written) {
        Q_EMIT writingFailed(index, text);
    }
    return saved.written;
}

PhoneBookEntry DataPhonebook::entryAt(int row) const
{
    PhoneBookEntry entry{.SN = field(row, u"SN"_s).toInt()};
    for (const QString &column :
         {u"Telno"_s, u"simpledes"_s, u"detaildes"_s, u"ifinblacklist"_s, u"IfVIP"_s}) {
        entry = withField(entry, column, core::NullToEmpty(field(row, column)).toString());
    }
    return entry;
}

// If another file has taken the place of the one in the list, nothing is written: its rows are not those in
// the list.
SavedEntry DataPhonebook::write(int row, const PhoneBookEntry &loaded, const PhoneBookEntry &typed)
{
    SavedEntry saved;
    if (isReplaced()) {
        return saved;
    }
    log().trap(name(), [&] { saved = writeTyped(databaseFile(), loaded, typed); });
    forgetRow(row);
    if (saved.written) {
        Q_EMIT entryWritten(saved.entry);
    }
    return saved;
}

} // namespace phonebook
