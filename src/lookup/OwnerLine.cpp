#include "lookup/OwnerLine.h"

using namespace Qt::StringLiterals;

namespace lookup {

OwnerLine::OwnerLine(QLabel &label, QPushButton &button, const core::TextLookup &texts,
                     core::Navigator &navigator)
    : m_label(label), m_button(button), m_texts(texts)
{
    QObject::connect(&button, &QPushButton::clicked, &label, [this, &navigator] {
        if (m_owner) {
            const bool phoneBook = m_owner->table == Owner::Table::PhoneBook;
            navigator.Show_Editor(phoneBook ? u"PHONEBOOK"_s : u"CUSTOMER"_s, m_owner->sn);
        }
    });
    show({});
}

void OwnerLine::show(const std::optional<Owner> &owner)
{
    m_owner = owner;
    m_label.setText(owner ? ownerText(m_texts, *owner) : QString());
    m_label.setVisible(owner.has_value());
    m_button.setVisible(owner.has_value());
}

} // namespace lookup
