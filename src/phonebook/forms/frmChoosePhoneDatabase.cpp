#include "phonebook/forms/frmChoosePhoneDatabase.h"

#include "appearance/Keys.h"
#include "appearance/ThemedIcons.h"
#include "core/TextUtilities.h"
#include "ui_frmChoosePhoneDatabase.h"

#include <QCloseEvent>

using namespace Qt::StringLiterals;

namespace phonebook {

frmChoosePhoneDatabase::frmChoosePhoneDatabase(const appearance::FormContext &context, AddEntry addEntry)
    : QDialog(nullptr, Qt::Window | Qt::WindowCloseButtonHint), m_context(context),
      m_addEntry(std::move(addEntry)), m_ui(std::make_unique<Ui::frmChoosePhoneDatabase>()),
      m_setup(context.services)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(appearance::programIcon());
    m_setup.load(*this);
    m_ui->Option2->setEnabled(m_context.navigator.canShow(core::Window::CustomerList));
    for (QWidget *control :
         {static_cast<QWidget *>(m_ui->Label2), static_cast<QWidget *>(m_ui->txtKeyWord)}) {
        control->setEnabled(false);
        connect(m_ui->Option2, &QRadioButton::toggled, control, &QWidget::setEnabled);
    }
    m_ui->Option1->setChecked(true);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QWidget::close);
    appearance::onHelpKey(*this, m_context.navigator, u"Popup_MainHelp"_s);
}

frmChoosePhoneDatabase::~frmChoosePhoneDatabase()
{
    m_setup.unload();
}

void frmChoosePhoneDatabase::setCaller(const QString &number, const QString &keyWord)
{
    m_name = core::callerName(keyWord, number);
    m_ui->txtCID->setText(number);
    m_ui->txtKeyWord->setText(keyWord);
    m_ui->Option1->setFocus();
}

void frmChoosePhoneDatabase::accept()
{
    if (m_ui->Option1->isChecked()) {
        m_addEntry(m_ui->txtCID->text(), m_name);
    } else {
        m_context.navigator.addCustomer(m_ui->txtCID->text(), m_ui->txtKeyWord->text(), m_name);
    }
    close();
}

void frmChoosePhoneDatabase::closeEvent(QCloseEvent *event)
{
    m_setup.rememberGeometry(*this);
    event->accept();
}

} // namespace phonebook
