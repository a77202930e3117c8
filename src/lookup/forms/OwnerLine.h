#pragma once

#include "lookup/ExistenceChecks.h"

#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QObject>
#include <QPushButton>
#include <QTimer>

#include <optional>

namespace lookup {

/// The line of an editor that says whose a typed name or number is already, with a button that opens him.
/// Neither is seen while it is nobody's. In a new row the operator is asked about it, too, when he leaves the
/// field.
class OwnerLine : public QObject
{
public:
    /// What of the editor it needs.
    struct Fields
    {
        QLabel &label;
        QPushButton &button;
        core::RowKey::Table table;
        QList<QLineEdit *> numbers;
        QLineEdit *name = nullptr; ///< of a customer: is looked up when it is left
    };

    /// The editor must outlive the line, and so must the checks.
    OwnerLine(QWidget &editor, const ExistenceChecks &checks, const Fields &fields);

    /// The editor turns to another row, whose name it shows already.
    void begin(std::optional<qint32> sn);
    /// It shows the texts of the row now.
    void follow(std::optional<qint32> sn);
    /// In a new row: the owner of the first name or number that the operator has typed and was not told
    /// about.
    std::optional<Owner> untold();
    void tell(const Owner &owner) const { m_checks.tell(owner, &m_editor); }

private:
    bool isUntold(const QLineEdit &field) const;
    void remember(const QLineEdit &field);
    void leave(QLineEdit &field);
    void check(QLineEdit &field);
    bool lookUpName();
    void show();

    QWidget &m_editor;
    const ExistenceChecks &m_checks;
    Fields m_fields;
    std::optional<qint32> m_edited;           ///< none while the row is new
    QHash<const QLineEdit *, QString> m_told; ///< of which the operator knows whether they are on file
    QString m_lookedUpName;                   ///< or the one of the row on file
    std::optional<Owner> m_ownerOfName;       ///< while it stands as it was looked up
    std::optional<Owner> m_owner;             ///< shown
    QTimer m_typing;                          ///< runs until the operator pauses in a number
};

} // namespace lookup
