#include "customers/forms/CustomerControlSet.h"

#include "appearance/MemoBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace customers {

namespace {

// On file 1 is checked and 2 is grey; in Qt it is the other way round.
int checkValue(const QCheckBox &box)
{
    switch (box.checkState()) {
    case Qt::Checked:
        return 1;
    case Qt::PartiallyChecked:
        return 2;
    default:
        return 0;
    }
}

// The operator can choose grey only where it is on file already.
void setCheckValue(QCheckBox &box, int value)
{
    constexpr int grey = 2;
    box.setTristate(value == grey);
    box.setCheckState(value == 0 ? Qt::Unchecked : value == grey ? Qt::PartiallyChecked : Qt::Checked);
}

QString textOf(const QWidget &control)
{
    if (const auto *const box = qobject_cast<const QCheckBox *>(&control)) {
        return QString::number(checkValue(*box));
    }
    if (const auto *const combo = qobject_cast<const QComboBox *>(&control)) {
        return combo->currentText();
    }
    if (const auto *const memo = qobject_cast<const appearance::MemoBox *>(&control)) {
        return memo->text();
    }
    const auto *const line = qobject_cast<const QLineEdit *>(&control);
    return line != nullptr ? line->text() : QString();
}

void setText(QWidget &control, const QString &text)
{
    if (auto *const box = qobject_cast<QCheckBox *>(&control)) {
        setCheckValue(*box, text.toInt());
    } else if (auto *const combo = qobject_cast<QComboBox *>(&control)) {
        combo->setCurrentIndex(-1);
        combo->setEditText(text);
        combo->lineEdit()->setCursorPosition(0);
    } else if (auto *const memo = qobject_cast<appearance::MemoBox *>(&control)) {
        memo->setText(text);
    } else if (auto *const line = qobject_cast<QLineEdit *>(&control)) {
        line->setText(text);
        line->setCursorPosition(0);
    }
}

} // namespace

CustomerControlSet::CustomerControlSet(const QWidget &form)
{
    std::ranges::transform(customerFields(), m_controls.begin(), [&](const CustomerField &field) {
        auto *const control = form.findChild<QWidget *>(QLatin1StringView(field.control));
        Q_ASSERT(control != nullptr);
        return control;
    });
    // By default a line edit would cut longer texts of other desks at 32,767 characters.
    for (QLineEdit *line : form.findChildren<QLineEdit *>()) {
        line->setMaxLength(std::numeric_limits<int>::max());
    }
}

FieldTexts CustomerControlSet::texts() const
{
    FieldTexts texts;
    std::ranges::transform(m_controls, texts.begin(),
                           [](const QWidget *control) { return textOf(*control); });
    return texts;
}

void CustomerControlSet::setTexts(const FieldTexts &texts)
{
    for (size_t place = 0; place < m_controls.size(); ++place) {
        setText(*m_controls.at(place), texts.at(place));
    }
}

void CustomerControlSet::followTexts(const FieldTexts &texts)
{
    for (size_t place = 0; place < m_controls.size(); ++place) {
        if (textOf(*m_controls.at(place)) != texts.at(place)) {
            setText(*m_controls.at(place), texts.at(place));
        }
    }
}

void CustomerControlSet::onChanged(QObject &receiver, const std::function<void()> &changed) const
{
    for (const QWidget *control : m_controls) {
        if (const auto *const box = qobject_cast<const QCheckBox *>(control)) {
            QObject::connect(box, &QCheckBox::stateChanged, &receiver, changed);
        } else if (const auto *const combo = qobject_cast<const QComboBox *>(control)) {
            QObject::connect(combo, &QComboBox::currentTextChanged, &receiver, changed);
        } else if (const auto *const memo = qobject_cast<const appearance::MemoBox *>(control)) {
            QObject::connect(memo, &appearance::MemoBox::textChanged, &receiver, changed);
        } else if (const auto *const line = qobject_cast<const QLineEdit *>(control)) {
            QObject::connect(line, &QLineEdit::textChanged, &receiver, changed);
        }
    }
}

} // namespace customers
