#pragma once

#include "core/TextLookup.h"
#include "phonebook/PhoneBookEntry.h"
#include "store/ResultModel.h"

namespace phonebook {

/// The data control of the phone book list. Marks are shown and copied as words; what is edited and written
/// are their letters.
class DataPhonebook : public store::ResultModel
{
    Q_OBJECT

public:
    /// Both must outlive the model.
    DataPhonebook(core::RunLog &log, const core::TextLookup &texts, QObject *parent = nullptr);

    bool isMark(int column) const;
    /// The word for a mark's letter.
    QString markWord(const QString &letter) const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

    /// The entry as the list shows it.
    PhoneBookEntry entryAt(int row) const;
    /// Writes what was typed into a row; not written, with an entry in the run log, where the file fails.
    SavedEntry write(int row, const PhoneBookEntry &loaded, const PhoneBookEntry &typed);

Q_SIGNALS:
    /// What was typed into a cell stands in the file.
    void entryWritten(const phonebook::PhoneBookEntry &entry);
    /// A blank number was not taken.
    void blankRefused();
    /// What was typed into a cell could not be written.
    void writingFailed(const QModelIndex &cell, const QString &typed);
    /// It was not written because somebody else has changed or deleted the entry since the list has shown it.
    void changedElsewhere(const QModelIndex &cell, const phonebook::PhoneBookEntry &loaded,
                          const QString &typed);

private:
    const core::TextLookup &m_texts;
};

} // namespace phonebook
