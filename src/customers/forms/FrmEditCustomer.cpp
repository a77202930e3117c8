#include "customers/forms/FrmEditCustomer.h"

#include "appearance/Keys.h"
#include "appearance/SaveRecord.h"
#include "core/TextUtilities.h"
#include "ui_FrmEditCustomer.h"

using namespace Qt::StringLiterals;

namespace customers {

FrmEditCustomer::FrmEditCustomer(const Context &context)
    : Form(context.forms.services), m_context(context), m_ui(std::make_unique<Ui::FrmEditCustomer>()),
      m_lists(context.forms.paths, context.forms.log, context.forms.services.translator),
      m_editing({context.forms.paths, context.forms.values, context.forms.log, context.forms.texts,
                 context.forms.server, context.effects})
{
    m_ui->setupUi(this);
    load();
    m_controls = CustomerControlSet(*this);
    setUpCombos();
    setUpAddresses();
    setUpButtons();
    mirror(*m_ui->txtLinkman, *m_ui->txtLinkman1);
    mirror(*m_ui->txtLinkmanMobile, *m_ui->txtLinkmanMobile1);
    mirror(*m_ui->txtLinkmanEmail, *m_ui->txtLinkmanEmail1);
    setUpChecks();
    setUpMessage();
    nameInTitle(*m_ui->txtCustomerName);
    startNewCustomer({}, {});
}

FrmEditCustomer::~FrmEditCustomer() = default;

void FrmEditCustomer::setUpButtons()
{
    core::Navigator &navigator = m_context.forms.navigator;
    m_ui->cmdViewNotePad->setEnabled(navigator.canShow(core::Window::CallNotes));
    connect(m_ui->cmdViewNotePad, &QPushButton::clicked, this, &FrmEditCustomer::viewNotes);
    connect(m_ui->Command1, &QPushButton::clicked, this, [this] {
        if (mayDropContents()) {
            startNewCustomer({}, {});
        }
    });
    connect(m_ui->Command2, &QPushButton::clicked, this, &FrmEditCustomer::save);
    connect(m_ui->Command3, &QPushButton::clicked, this, &QWidget::close);
    offerHelp(navigator, u"Popup_CustomerDatabase_Edit"_s, {m_ui->Command4});
    appearance::onKeys(*this, QKeySequence::Save, [this] { save(); });
}

void FrmEditCustomer::begin(const LoadedCustomer &customer)
{
    m_controls.setTexts(customer.record.shown);
    m_ownerLine->begin(customer.record.SN);
    follow(customer);
    m_ui->lblMessage->clear();
    m_ui->SSTab1->setCurrentIndex(0);
    m_ui->txtCustomerName->setFocus();
}

// Fills in only what differs. After a save that is what another desk has changed.
void FrmEditCustomer::follow(const LoadedCustomer &customer)
{
    m_loaded = customer;
    m_ui->Command1->setEnabled(!customer.record.SN);
    m_ui->txtSN->setText(customer.record.SN ? QString::number(*customer.record.SN) : QString());
    m_controls.followTexts(customer.record.shown);
    m_loaded.record.shown = m_controls.texts();
    m_ownerLine->follow(customer.record.SN);
}

void FrmEditCustomer::startNewCustomer(const QString &number, const QString &name)
{
    begin(CustomerEditing::newCustomer(number, name));
}

void FrmEditCustomer::addCustomer(const QString &number, const QString &name)
{
    if (mayDropContents()) {
        startNewCustomer(number, name);
    }
    bringToFront();
}

bool FrmEditCustomer::ShowCustomerBySN(qint32 sn)
{
    return edit([&] { return m_editing.ShowCustomerBySN(sn); });
}

bool FrmEditCustomer::ShowCustomerByName(const QString &name)
{
    return edit([&] { return m_editing.ShowCustomerByName(name); });
}

bool FrmEditCustomer::edit(const std::function<FoundCustomer()> &find)
{
    FoundCustomer found;
    if (mayDropContents()) {
        found = find();
    }
    if (found.customer) {
        begin(*found.customer);
    } else if (!found.message.isEmpty()) {
        m_context.forms.prompts.tell(found.message, {}, this);
    }
    if (found.customer || isVisible()) {
        bringToFront();
    }
    return found.customer.has_value();
}

void FrmEditCustomer::appendNumber(const QString &number)
{
    m_ui->txtCompanyCall->setText(m_ui->txtCompanyCall->text() + u',' + number);
    m_ui->lblMessage->setText(m_context.forms.texts.Lms(u"NumberAddedUnsaved"_s)
                                  .replace(u"%1"_s, core::isolated(core::shownText(number))));
}

// False where the operator wants to go on with what stands in the form.
bool FrmEditCustomer::mayDropContents()
{
    return !hasUnsavedChanges() || appearance::settleUnsaved(m_context.forms, *this,
                                                             {.name = m_ui->txtCustomerName->text(),
                                                              .question = u"CustomerUnsaved"_s,
                                                              .save = [this] { return save(); }});
}

// The operator hears of one thing: why nothing was saved, or whose the name or number is.
bool FrmEditCustomer::save()
{
    settleFields();
    const std::optional<lookup::Owner> owner = m_ownerLine->untold();
    CustomerRecord typed = shownCustomer();
    LoadedCustomer loaded = m_loaded;
    const SavedCustomer saved = appearance::saveRecord(
        m_context.forms,
        appearance::recordEditor(*this, typed.text(u"CustomerName"),
                                 [this](const QString &column) { return controlOf(column); }),
        [&] { return m_editing.save(loaded, typed); },
        [&](const core::Saved &refused, core::Whose holds) {
            CustomerEditing::decide(refused, holds, loaded, typed);
        });
    if (saved.dropped) {
        startNewCustomer({}, {});
    } else if (saved.written) {
        follow(saved.customer);
        m_ui->lblMessage->setText(m_context.forms.texts.Lms(u"EntrySaved"_s));
    } else if (!saved.wrongField.isEmpty()) {
        turnTo(saved.wrongField);
    }
    if (owner && saved.written) {
        m_ownerLine->tell(*owner);
    }
    return saved.written || saved.dropped;
}

// The notes of a customer on file are kept under his stored name, whatever the box shows now.
void FrmEditCustomer::viewNotes()
{
    const QString &onFile = m_loaded.nameOnFile();
    m_context.forms.navigator.ShowNotePad(m_loaded.record.SN ? onFile
                                                             : m_ui->txtCustomerName->text().trimmed());
}

} // namespace customers
