#include "phonebook/forms/frmSimplePhoneBookEdit.h"

#include "appearance/MemoBox.h"
#include "appearance/SaveRecord.h"
#include "ui_frmSimplePhoneBookEdit.h"

using namespace Qt::StringLiterals;

namespace phonebook {

frmSimplePhoneBookEdit::frmSimplePhoneBookEdit(const Context &context)
    : Form(context.forms.services, Qt::Window | Qt::WindowCloseButtonHint), m_context(context),
      m_ui(std::make_unique<Ui::frmSimplePhoneBookEdit>())
{
    m_ui->setupUi(this);
    load();
    m_ownerLine.emplace(*this, context.checks,
                        lookup::OwnerLine::Fields{.label = *m_ui->lblOwner,
                                                  .button = *m_ui->cmdOpenOwner,
                                                  .table = core::RowKey::Table::PhoneBook,
                                                  .numbers = {m_ui->txtTelno}});
    connectControls();
    m_loaded = contents();
}

frmSimplePhoneBookEdit::~frmSimplePhoneBookEdit() = default;

void frmSimplePhoneBookEdit::connectControls()
{
    const auto clearNotice = [this] { m_ui->lblNotice->clear(); };
    connect(m_ui->txtTelno, &QLineEdit::textChanged, this, clearNotice);
    connect(m_ui->txtSimpleDes, &QLineEdit::textChanged, this, clearNotice);
    connect(m_ui->txtDetailDes, &appearance::MemoBox::textChanged, this, clearNotice);
    connect(m_ui->chkVIP, &QCheckBox::stateChanged, this, clearNotice);
    connect(m_ui->chkBlackList, &QCheckBox::stateChanged, this, clearNotice);
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->Command2, &QPushButton::clicked, this, &frmSimplePhoneBookEdit::save);
    nameInTitle(*m_ui->txtSimpleDes);
    offerHelp(m_context.forms.navigator, u"Popup_SimplePhoneBook"_s);
}

bool frmSimplePhoneBookEdit::editEntry(const PhoneBookEntry &entry)
{
    if (m_loaded.SN == entry.SN ? !isChanged() : mayDropContents()) {
        fill(entry);
    }
    return m_loaded.SN == entry.SN;
}

void frmSimplePhoneBookEdit::addEntry(const QString &number, const QString &name)
{
    if (mayDropContents()) {
        fill({.Telno = number, .simpledes = name});
        (number.isEmpty() ? m_ui->txtTelno : m_ui->txtSimpleDes)->setFocus(); // it is the next thing to type
    }
}

void frmSimplePhoneBookEdit::fill(const PhoneBookEntry &entry)
{
    m_ownerLine->begin(entry.SN);
    m_ui->txtDetailDes->setText(entry.detaildes);
    follow(entry);
    m_ui->txtTelno->setFocus();
}

// Shows the entry; controls that show its texts already are left alone and keep their cursors.
void frmSimplePhoneBookEdit::follow(const PhoneBookEntry &entry)
{
    const auto show = [](QLineEdit *box, const QString &text) {
        if (box->text() != text) {
            box->setText(text);
        }
    };
    show(m_ui->txtSN, entry.SN ? QString::number(*entry.SN) : QString());
    show(m_ui->txtTelno, entry.Telno);
    show(m_ui->txtSimpleDes, entry.simpledes);
    if (m_ui->txtDetailDes->text() != entry.detaildes) {
        m_ui->txtDetailDes->setText(entry.detaildes);
    }
    m_ui->chkBlackList->setCheckState(entry.ifinblacklist);
    m_ui->chkVIP->setCheckState(entry.IfVIP);
    m_loaded.SN = entry.SN;
    m_loaded = contents();
    m_ownerLine->follow(entry.SN);
}

PhoneBookEntry frmSimplePhoneBookEdit::contents() const
{
    return {.SN = m_loaded.SN,
            .Telno = m_ui->txtTelno->text(),
            .simpledes = m_ui->txtSimpleDes->text(),
            .detaildes = m_ui->txtDetailDes->text(),
            .ifinblacklist = m_ui->chkBlackList->checkState(),
            .IfVIP = m_ui->chkVIP->checkState()};
}

QWidget *frmSimplePhoneBookEdit::controlOf(const QString &column) const
{
    const QString control = column == "ifinblacklist"_L1 ? u"chkBlackList"_s
                            : column == "IfVIP"_L1       ? u"chkVIP"_s
                                                         : u"txt"_s + column;
    const QList<QWidget *> all = findChildren<QWidget *>();
    const auto found = std::ranges::find_if(all, [&control](const QWidget *widget) {
        return widget->objectName().compare(control, Qt::CaseInsensitive) == 0;
    });
    return found != all.end() ? *found : nullptr;
}

bool frmSimplePhoneBookEdit::mayDropContents()
{
    return !isChanged() || appearance::settleUnsaved(m_context.forms, *this,
                                                     {.name = m_ui->txtSimpleDes->text(),
                                                      .question = u"AskSaveEntry"_s,
                                                      .save = [this] { return save(); }});
}

// Enter saves without leaving the box, so the numbers are checked here, too. A number that is on file does
// not prevent saving; the operator is told once the entry is written. From then on the form edits that entry,
// and saving again adds no second row.
bool frmSimplePhoneBookEdit::save()
{
    const appearance::FormContext &forms = m_context.forms;
    const std::optional<lookup::Owner> owner = m_ownerLine->untold();
    PhoneBookEntry loaded = m_loaded;
    PhoneBookEntry typed = contents();
    const Desk desk{forms.paths, forms.log, forms.texts, forms.server, m_context.entrySaved};
    const SavedEntry saved = appearance::saveRecord(
        forms,
        appearance::recordEditor(*this, typed.simpledes,
                                 [this](const QString &column) { return controlOf(column); }),
        [&] { return phonebook::save(desk, loaded, typed); },
        [&](const core::Saved &refused, core::Whose holds) { decide(refused, holds, loaded, typed); });
    if (saved.dropped) {
        fill({});
    } else if (saved.written) {
        follow(saved.entry);
        m_ui->lblNotice->setText(forms.texts.Lms(u"EntrySaved"_s));
    } else if (!saved.wrongField.isEmpty()) {
        controlOf(saved.wrongField)->setFocus();
    }
    if (owner && saved.written) {
        m_ownerLine->tell(*owner);
    }
    return saved.written || saved.dropped;
}

} // namespace phonebook
