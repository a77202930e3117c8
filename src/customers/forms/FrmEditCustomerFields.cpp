#include "appearance/FieldLeft.h"
#include "appearance/theme/ThemedIcons.h"
#include "customers/Addresses.h"
#include "customers/forms/FrmEditCustomer.h"
#include "ui_FrmEditCustomer.h"

#include <QCompleter>
#include <QEvent>

using namespace Qt::StringLiterals;

// What single fields do, apart from being loaded and saved.
namespace customers {

// A box that completed or chose by itself would change what was typed: a city in other letters is another
// item.
void FrmEditCustomer::setUpCombos()
{
    const QList<QComboBox *> combos = findChildren<QComboBox *>();
    for (QComboBox *combo : combos) {
        combo->completer()->setCompletionMode(QCompleter::PopupCompletion);
        combo->completer()->setCaseSensitivity(Qt::CaseSensitive);
        combo->setFocusPolicy(Qt::StrongFocus);
        combo->installEventFilter(this);
        if (combo == m_ui->txtContactPersonSex) {
            combo->addItems({u"Male"_s, u"FeMale"_s});
        } else if (combo != m_ui->cmbSeatID) {
            m_lists.ReadComboList(*combo);
        }
        appearance::onLeft(*combo, *this, [this, combo] { rememberText(*combo); });
    }
}

void FrmEditCustomer::rememberText(QComboBox &combo)
{
    if (&combo != m_ui->txtContactPersonSex && &combo != m_ui->cmbSeatID) {
        m_lists.SaveComboItem(combo);
    }
}

void FrmEditCustomer::setUpAddresses()
{
    const QColor ink = palette().color(QPalette::ButtonText);
    m_ui->cmdOpenPage->setIcon(appearance::themedIcon(u"globe", ink));
    m_ui->cmdSendEmail->setIcon(appearance::themedIcon(u"mail", ink));
    connect(m_ui->cmdOpenPage, &QToolButton::clicked, this, &FrmEditCustomer::openHomepage);
    connect(m_ui->cmdSendEmail, &QToolButton::clicked, this, &FrmEditCustomer::writeEmail);
    m_ui->txtHomepage->installEventFilter(this);
    m_ui->txtLinkmanEmail1->installEventFilter(this);
}

void FrmEditCustomer::mirror(QLineEdit &one, QLineEdit &other)
{
    const auto copy = [](QLineEdit &from, QLineEdit &to) {
        connect(&from, &QLineEdit::textChanged, &to, [&to](const QString &text) {
            if (to.text() != text) {
                to.setText(text);
            }
        });
    };
    copy(one, other);
    copy(other, one);
}

void FrmEditCustomer::setUpChecks()
{
    m_ownerLine.emplace(
        *this, m_context.checks,
        lookup::OwnerLine::Fields{.label = *m_ui->lblOwner,
                                  .button = *m_ui->cmdOpenOwner,
                                  .table = core::RowKey::Table::Customer,
                                  .numbers = {m_ui->txtCompanyCall, m_ui->txtCompanyFax,
                                              m_ui->txtLinkmanMobile, m_ui->txtLinkmanMobile1},
                                  .name = m_ui->txtCustomerName});
    // Of two that watch a field Qt asks the later one first, and the owner line is to look up the name as it
    // will be filed.
    appearance::onLeft(*m_ui->txtCustomerName, *this, [this] { replaceApostrophes(); });
}

QWidget *FrmEditCustomer::controlOf(QStringView column) const
{
    return m_controls.all().at(static_cast<size_t>(fieldOf(column)));
}

void FrmEditCustomer::turnTo(QStringView column)
{
    QWidget *control = controlOf(column);
    for (int page = 0; page < m_ui->SSTab1->count(); ++page) {
        if (m_ui->SSTab1->widget(page)->isAncestorOf(control)) {
            m_ui->SSTab1->setCurrentIndex(page);
        }
    }
    control->setFocus();
}

// A message about the record disappears when a field is changed.
void FrmEditCustomer::setUpMessage()
{
    m_controls.onChanged(*this, [this] { m_ui->lblMessage->clear(); });
}

// Keys that save leave no field.
void FrmEditCustomer::settleFields()
{
    replaceApostrophes();
    if (auto *combo = qobject_cast<QComboBox *>(focusWidget())) {
        rememberText(*combo);
    }
}

// If another program has filed the name with an apostrophe, it stays the customer's name until somebody types
// another.
void FrmEditCustomer::replaceApostrophes()
{
    QLineEdit &edit = *m_ui->txtCustomerName;
    if (edit.text() == m_loaded.record.text(u"CustomerName")) {
        return;
    }
    const QString name = nameToFile(edit.text());
    if (name != edit.text()) {
        edit.setText(name);
    }
}

void FrmEditCustomer::openHomepage()
{
    OpenIE(m_context.forms.log, m_context.forms.shell, m_ui->txtHomepage->text());
}

void FrmEditCustomer::writeEmail()
{
    SendEmail(m_context.forms.log, m_context.forms.shell, m_ui->txtLinkmanEmail1->text());
}

// Scrolling the form with the wheel must not change the box that happens to be under the pointer.
bool FrmEditCustomer::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonDblClick && watched == m_ui->txtHomepage) {
        openHomepage();
    } else if (event->type() == QEvent::MouseButtonDblClick && watched == m_ui->txtLinkmanEmail1) {
        writeEmail();
    } else if (event->type() == QEvent::Wheel) {
        auto *const combo = qobject_cast<QComboBox *>(watched);
        return combo != nullptr && !combo->hasFocus();
    }
    return Form::eventFilter(watched, event);
}

} // namespace customers
