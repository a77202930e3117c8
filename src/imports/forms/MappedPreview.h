#pragma once

#include <QComboBox>
#include <QTableWidget>

namespace imports {

/// The first rows of a list, and above each column a box with the field that it goes to.
class MappedPreview : public QTableWidget
{
    Q_OBJECT

public:
    explicit MappedPreview(QWidget *parent = nullptr);

    /// What a box offers: nothing, by the text for it, and the fields.
    void setChoices(const QString &nothing, const QStringList &fields);
    void showRows(const QStringList &headings, const QList<QStringList> &rows,
                  const QList<int> &fieldOfColumn);
    /// A field for each column; -1 for none.
    QList<int> fieldOfColumn() const;

Q_SIGNALS:
    /// By the operator.
    void fieldsChanged();

private:
    QComboBox *box(int column) const;
    void addBox(int column, int field);

    QStringList m_choices; ///< the first one is nothing
};

} // namespace imports
