#include "phonebook/frmSimplePhoneBookEdit.h"

#include "appearance/FieldChecks.h"
#include "appearance/Keys.h"
#include "appearance/NameInTitle.h"
#include "appearance/SaveRecord.h"
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
    m_ownerLine.emplace(*m_ui->lblOwner, *m_ui->cmdOpenOwner, needs.forms.texts, needs.forms.navigator);
    connectControls();
    m_loaded = contents();
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
    constexpr std::chrono::milliseconds pause{300};
    m_typing.setSingleShot(true);
    m_typing.setInterval(pause);
    connect(m_ui->txtTelno, &QLineEdit::textChanged, &m_typing, qOverload<>(&QTimer::start));
    connect(&m_typing, &QTimer::timeout, this, &frmSimplePhoneBookEdit::showOwner);
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->Command2, &QPushButton::clicked, this, &frmSimplePhoneBookEdit::save);
    appearance::nameInTitle(*this, *m_ui->txtSimpleDes);
    appearance::onHelpKey(*this, m_needs.forms.navigator, u"Popup_SimplePhoneBook"_s);
}

void frmSimplePhoneBookEdit::editEntry(const PhoneBookEntry &entry)
{
    const bool isThisOne = m_mode == Mode::Edit && m_loaded.SN == entry.SN;
    if (isThisOne ? !isChanged() : mayDropContents()) {
        fill(entry, Mode::Edit);
    }
}

void frmSimplePhoneBookEdit::addEntry(const QString &number, const QString &name)
{
    if (mayDropContents()) {
        fill({.Telno = number, .simpledes = name}, Mode::Add);
        (number.isEmpty() ? m_ui->txtTelno : m_ui->txtSimpleDes)->setFocus(); // it is the next thing to type
    }
}

void frmSimplePhoneBookEdit::fill(const PhoneBookEntry &entry, Mode mode)
{
    m_mode = mode;
    m_checkedNumbers.clear();
    m_detailDes.show(*m_ui->txtDetailDes, entry.detaildes);
    follow(entry);
    m_ui->txtTelno->setFocus();
}

/// The controls show the entry; those that hold its texts already keep their cursors.
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
    if (m_detailDes.text(*m_ui->txtDetailDes) != entry.detaildes) {
        m_detailDes.show(*m_ui->txtDetailDes, entry.detaildes);
    }
    m_ui->chkBlackList->setCheckState(entry.ifinblacklist);
    m_ui->chkVIP->setCheckState(entry.IfVIP);
    m_loaded.SN = entry.SN;
    m_loaded = contents();
    showOwner();
}

PhoneBookEntry frmSimplePhoneBookEdit::contents() const
{
    return {.SN = m_loaded.SN,
            .Telno = m_ui->txtTelno->text(),
            .simpledes = m_ui->txtSimpleDes->text(),
            .detaildes = m_detailDes.text(*m_ui->txtDetailDes),
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

bool frmSimplePhoneBookEdit::isUnchecked() const
{
    const QString numbers = m_ui->txtTelno->text().trimmed();
    return m_mode == Mode::Add && !numbers.isEmpty() && numbers != m_checkedNumbers;
}

void frmSimplePhoneBookEdit::checkNumbers()
{
    if (isUnchecked()) {
        m_checkedNumbers = m_ui->txtTelno->text().trimmed();
        showOwner();
        m_needs.checks.IfNumbersExistInSimplePhoneBook(m_checkedNumbers, this);
    }
}

void frmSimplePhoneBookEdit::showOwner()
{
    constexpr auto table = lookup::Owner::Table::PhoneBook;
    m_ownerLine->show(m_needs.checks.knowNumbers(table)
                          ? m_needs.checks.ownerOfNumbers(table, m_ui->txtTelno->text(), m_loaded.SN)
                          : std::nullopt);
}

// The numbers are checked here too: Enter saves without leaving the box. What is found does not keep the
// operator from saving, and is told once the entry is written. From then on it is edited like any other;
// saving again adds no second row.
bool frmSimplePhoneBookEdit::save()
{
    const appearance::FormContext &forms = m_needs.forms;
    const auto owner = isUnchecked() ? m_needs.checks.ownerOfNumbers(lookup::Owner::Table::PhoneBook,
                                                                     m_ui->txtTelno->text(), {})
                                     : std::nullopt;
    PhoneBookEntry loaded = m_loaded;
    PhoneBookEntry typed = contents();
    const Desk desk{forms.paths, forms.log, forms.texts, forms.server, m_needs.rebindList};
    const SavedEntry saved = appearance::saveRecord(
        forms,
        appearance::recordEditor(*this, typed.simpledes,
                                 [this](const QString &column) { return controlOf(column); }),
        [&] { return phonebook::save(desk, loaded, typed); },
        [&](const core::Saved &refused, core::Whose holds) { decide(refused, holds, loaded, typed); });
    if (saved.dropped) {
        fill({}, Mode::Add);
    } else if (saved.written) {
        m_mode = Mode::Edit;
        follow(saved.entry);
        m_ui->lblNotice->setText(forms.texts.Lms(u"EntrySaved"_s));
    } else if (!saved.wrongField.isEmpty()) {
        controlOf(saved.wrongField)->setFocus();
    }
    if (owner && saved.written) {
        m_needs.checks.tell(*owner, this);
    }
    return saved.written || saved.dropped;
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
