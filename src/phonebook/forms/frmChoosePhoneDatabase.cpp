#include "phonebook/forms/frmChoosePhoneDatabase.h"

#include "core/TextUtilities.h"
#include "ui_frmChoosePhoneDatabase.h"

using namespace Qt::StringLiterals;

namespace phonebook {

frmChoosePhoneDatabase::frmChoosePhoneDatabase(const appearance::FormContext &context, AddEntry addEntry)
    : Form(context.services, Qt::Window | Qt::WindowCloseButtonHint), m_context(context),
      m_addEntry(std::move(addEntry)), m_ui(std::make_unique<Ui::frmChoosePhoneDatabase>())
{
    m_ui->setupUi(this);
    load();
    m_ui->Option2->setEnabled(m_context.navigator.canShow(core::Window::CustomerList));
    for (QWidget *control :
         {static_cast<QWidget *>(m_ui->Label2), static_cast<QWidget *>(m_ui->txtKeyWord)}) {
        control->setEnabled(false);
        connect(m_ui->Option2, &QRadioButton::toggled, control, &QWidget::setEnabled);
    }
    m_ui->Option1->setChecked(true);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &frmChoosePhoneDatabase::openChosen);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QWidget::close);
    offerHelp(m_context.navigator, u"Popup_MainHelp"_s);
}

frmChoosePhoneDatabase::~frmChoosePhoneDatabase() = default;

void frmChoosePhoneDatabase::setCaller(const QString &number, const QString &keyWord)
{
    m_name = core::callerName(keyWord, number);
    m_ui->txtCID->setText(number);
    m_ui->txtKeyWord->setText(keyWord);
    m_ui->Option1->setFocus();
}

void frmChoosePhoneDatabase::openChosen()
{
    if (m_ui->Option1->isChecked()) {
        m_addEntry(m_ui->txtCID->text(), m_name);
    } else {
        m_context.navigator.addCustomer(m_ui->txtCID->text(), m_ui->txtKeyWord->text(), m_name);
    }
    close();
}

} // namespace phonebook
