#include "lookup/forms/OwnerLine.h"

#include "appearance/FieldLeft.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lookup {

OwnerLine::OwnerLine(QWidget &editor, const ExistenceChecks &checks, const Fields &fields)
    : m_editor(editor), m_checks(checks), m_fields(fields)
{
    constexpr std::chrono::milliseconds pause{300};
    m_typing.setSingleShot(true);
    m_typing.setInterval(pause);
    connect(&m_typing, &QTimer::timeout, this, &OwnerLine::show);
    connect(&fields.button, &QPushButton::clicked, this, [this] {
        if (m_owner) {
            m_checks.open(*m_owner);
        }
    });
    for (QLineEdit *numbers : fields.numbers) {
        appearance::onLeft(*numbers, *this, [this, numbers] { leave(*numbers); });
        connect(numbers, &QLineEdit::textChanged, &m_typing, qOverload<>(&QTimer::start));
    }
    if (fields.name != nullptr) {
        appearance::onLeft(*fields.name, *this, [this] { leave(*m_fields.name); });
        connect(fields.name, &QLineEdit::textChanged, this, [this] {
            m_lookedUpName.clear();
            if (std::exchange(m_ownerOfName, std::nullopt)) {
                show();
            }
        });
    }
    show();
}

void OwnerLine::begin(std::optional<qint32> sn)
{
    m_told.clear();
    m_ownerOfName.reset();
    m_lookedUpName = sn && m_fields.name ? m_fields.name->text().trimmed() : QString();
    m_edited = sn;
}

void OwnerLine::follow(std::optional<qint32> sn)
{
    m_edited = sn;
    show();
}

void OwnerLine::show()
{
    m_owner = m_ownerOfName;
    for (const QLineEdit *numbers : m_fields.numbers) {
        if (!m_owner) {
            m_owner = m_checks.ownerOfNumbers(m_fields.table, numbers->text(), m_edited);
        }
    }
    m_fields.label.setText(m_owner ? m_checks.text(*m_owner) : QString());
    m_fields.label.setVisible(m_owner.has_value());
    m_fields.button.setVisible(m_owner.has_value());
}

bool OwnerLine::isUntold(const QLineEdit &field) const
{
    const QString text = field.text().trimmed();
    return !m_edited && !text.isEmpty() && text != m_told.value(&field);
}

// False after a failure, so that the name is looked up again the next time.
bool OwnerLine::lookUpName()
{
    const QString name = m_fields.name->text().trimmed();
    if (name != m_lookedUpName) {
        const OwnerAnswer answer = m_checks.customerNamed(name, m_edited);
        if (!answer.isAnswered) {
            return false;
        }
        m_ownerOfName = answer.owner;
        m_lookedUpName = name;
    }
    return true;
}

std::optional<Owner> OwnerLine::untold()
{
    if (m_fields.name != nullptr && isUntold(*m_fields.name)) {
        lookUpName();
        if (m_ownerOfName) {
            return m_ownerOfName;
        }
    }
    for (const QLineEdit *numbers : m_fields.numbers) {
        if (isUntold(*numbers)) {
            if (auto owner = m_checks.indexedOwner(m_fields.table, numbers->text())) {
                return owner;
            }
        }
    }
    return {};
}

// Other fields that show the same text, and that nobody has typed in, count as told, too.
void OwnerLine::remember(const QLineEdit &field)
{
    const QString text = field.text().trimmed();
    m_told[&field] = text;
    for (const QLineEdit *other : m_fields.numbers) {
        if (!other->isModified() && other->text().trimmed() == text) {
            m_told[other] = text;
        }
    }
}

void OwnerLine::leave(QLineEdit &field)
{
    appearance::whenReleased(m_editor, [this, &field] { check(field); });
}

// Remember first, tell then: the message box takes the keyboard from the field, which would report again that
// it is left.
void OwnerLine::check(QLineEdit &field)
{
    const QString text = field.text().trimmed();
    const bool tells = isUntold(field);
    if (&field == m_fields.name && !lookUpName()) {
        return;
    }
    remember(field);
    if (&field == m_fields.name) {
        show();
        if (tells && m_ownerOfName) {
            tell(*m_ownerOfName);
        }
    } else if (tells) {
        show();
        m_fields.table == core::RowKey::Table::PhoneBook
            ? m_checks.IfNumbersExistInSimplePhoneBook(text, &m_editor)
            : m_checks.IfThePhoneNumberExistInCustomer(text, &m_editor);
    }
}

} // namespace lookup
