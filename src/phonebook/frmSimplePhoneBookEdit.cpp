#include "phonebook/frmSimplePhoneBookEdit.h"

#include "appearance/FieldChecks.h"
#include "appearance/Keys.h"
#include "appearance/NameInTitle.h"
#include "appearance/ThemedIcons.h"
#include "core/TextUtilities.h"
#include "ui_frmSimplePhoneBookEdit.h"

#include <QCloseEvent>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace phonebook {

frmSimplePhoneBookEdit::frmSimplePhoneBookEdit(const Needs &needs)
    : QDialog(nullptr, Qt::Window | Qt::WindowCloseButtonHint), m_needs(needs),
      m_ui(std::make_unique<Ui::frmSimplePhoneBookEdit>()), m_setup(needs.forms.services)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(appearance::programIcon());
    m_setup.load(*this);
    m_ui->txtTelno->installEventFilter(this);
    connectControls();
    m_asShown = contents();
}

frmSimplePhoneBookEdit::~frmSimplePhoneBookEdit()
{
    m_setup.unload();
}

void frmSimplePhoneBookEdit::connectControls()
{
    const auto clearNotice = [this] { m_ui->lblNotice->clear(); };
    connect(m_ui->txtTelno, &QLineEdit::textChanged, this, clearNotice);
    connect(m_ui->txtSimpleDes, &QLineEdit::textChanged, this, clearNotice);
    connect(m_ui->txtDetailDes, &QPlainTextEdit::textChanged, this, clearNotice);
    connect(m_ui->chkVIP, &QCheckBox::stateChanged, this, clearNotice);
    connect(m_ui->chkBlackList, &QCheckBox::stateChanged, this, clearNotice);
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->Command2, &QPushButton::clicked, this, &frmSimplePhoneBookEdit::save);
    appearance::nameInTitle(*this, *m_ui->txtSimpleDes);
    appearance::onHelpKey(*this, m_needs.forms.navigator, u"Popup_SimplePhoneBook"_s);
}

void frmSimplePhoneBookEdit::editEntry(const PhoneBookEntry &entry)
{
    const bool isThisOne = m_mode == Mode::Edit && m_asShown.SN == entry.SN;
    if (isThisOne ? !isChanged() : mayDropContents()) {
        fill(entry, Mode::Edit);
    }
}

void frmSimplePhoneBookEdit::addEntry(const QString &number)
{
    if (mayDropContents()) {
        fill({.Telno = number}, Mode::Add);
        (number.isEmpty() ? m_ui->txtTelno : m_ui->txtSimpleDes)->setFocus(); // it is the next thing to type
    }
}

void frmSimplePhoneBookEdit::fill(const PhoneBookEntry &entry, Mode mode)
{
    m_mode = mode;
    m_checkedNumbers.clear();
    m_ui->txtSN->setText(entry.SN);
    m_ui->txtTelno->setText(entry.Telno);
    m_ui->txtSimpleDes->setText(entry.simpledes);
    m_detailDes.show(*m_ui->txtDetailDes, entry.detaildes);
    m_ui->chkBlackList->setCheckState(entry.ifinblacklist);
    m_ui->chkVIP->setCheckState(entry.IfVIP);
    m_asShown = contents();
    m_ui->txtTelno->setFocus();
}

PhoneBookEntry frmSimplePhoneBookEdit::contents() const
{
    return {.SN = m_ui->txtSN->text(),
            .Telno = m_ui->txtTelno->text(),
            .simpledes = m_ui->txtSimpleDes->text(),
            .detaildes = m_detailDes.text(*m_ui->txtDetailDes),
            .ifinblacklist = m_ui->chkBlackList->checkState(),
            .IfVIP = m_ui->chkVIP->checkState()};
}

bool frmSimplePhoneBookEdit::mayDropContents()
{
    if (!isChanged()) {
        return true;
    }
    const QString question = m_needs.forms.texts.Lms(u"AskSaveEntry"_s);
    switch (m_needs.forms.prompts.askSave(core::questionAbout(m_ui->txtSimpleDes->text(), question), this)) {
    case core::Prompts::Answer::Save:
        return save();
    case core::Prompts::Answer::Discard:
        return true;
    case core::Prompts::Answer::Cancel:
        break;
    }
    return false;
}

bool frmSimplePhoneBookEdit::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->txtTelno && appearance::leavesField(*event)) {
        QTimer::singleShot(0, this, [this] { appearance::whenReleased(*this, [this] { checkNumbers(); }); });
    }
    return QDialog::eventFilter(watched, event);
}

void frmSimplePhoneBookEdit::checkNumbers()
{
    const QString numbers = m_ui->txtTelno->text().trimmed();
    if (m_mode == Mode::Add && !numbers.isEmpty() && numbers != m_checkedNumbers) {
        m_checkedNumbers = numbers;
        m_needs.checks.IfNumbersExistInSimplePhoneBook(numbers);
    }
}

// The numbers are checked here too: Enter saves without leaving the box. What is found does not keep the
// operator from saving. Once written the entry is edited like any other; saving again adds no second row.
bool frmSimplePhoneBookEdit::save()
{
    const appearance::FormContext &forms = m_needs.forms;
    checkNumbers();
    if (m_ui->txtTelno->text().trimmed().isEmpty()) {
        forms.prompts.tell(forms.texts.Lms(u"PhoneNumbersCantbeBlank"_s));
        m_ui->txtTelno->setFocus();
        return false;
    }
    const QString sn = SaveSimplePhoneBook(forms.log, forms.paths.PhoneBookFile, contents(),
                                           {m_needs.rebindList, forms.server});
    if (sn.isEmpty()) {
        forms.prompts.tell(forms.texts.Lms(u"EntryNotSaved"_s) + u'\n' +
                           troubleText(forms.texts, forms.paths.PhoneBookFile));
        return false;
    }
    m_mode = Mode::Edit;
    m_ui->txtSN->setText(sn);
    m_asShown = contents();
    m_ui->lblNotice->setText(forms.texts.Lms(u"EntrySaved"_s));
    return true;
}

void frmSimplePhoneBookEdit::closeEvent(QCloseEvent *event)
{
    if (mayDropContents()) {
        m_setup.rememberGeometry(*this);
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace phonebook
