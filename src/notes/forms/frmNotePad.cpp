#include "notes/forms/frmNotePad.h"

#include "appearance/Keys.h"
#include "appearance/MemoBox.h"
#include "appearance/SaveRecord.h"
#include "notes/ExportText.h"
#include "notes/PrintNotePad.h"
#include "notes/ReportRun.h"
#include "ui_frmNotePad.h"

#include <QTabBar>

using namespace Qt::StringLiterals;

namespace notes {

frmNotePad::frmNotePad(const NoteContext &context)
    : Form(context.forms.services), m_context(context),
      m_notes(context.forms.log, context.forms.paths, context.forms.texts),
      m_ui(std::make_unique<Ui::frmNotePad>())
{
    m_ui->setupUi(this);
    load();
    nameInTitle(*m_ui->txtCustomerName);
    connectButtons();
    connectMessage();
    m_ui->cmdExport->setEnabled(false); // until there is a report
}

frmNotePad::~frmNotePad() = default;

void frmNotePad::connectButtons()
{
    connect(m_ui->cmdSave, &QPushButton::clicked, this, &frmNotePad::save);
    appearance::onKeys(*this, QKeySequence::Save, [this] { save(); });
    offerHelp(m_context.forms.navigator, u"Popup_Notes"_s);
    connect(m_ui->cmdRefreshReport, &QPushButton::clicked, this, &frmNotePad::refreshReport);
    connect(m_ui->cmdPrint, &QPushButton::clicked, this, &frmNotePad::print);
    connect(m_ui->cmdExport, &QPushButton::clicked, this, [this] {
        const appearance::FormContext &forms = m_context.forms;
        ExportText(forms.log, forms.paths, forms.prompts, forms.shell, forms.texts,
                   m_ui->txtReport->report());
    });
    connect(m_ui->SSTab1, &QTabWidget::currentChanged, this, [this] {
        if (m_ui->SSTab1->currentWidget() == m_ui->pageEntry && !m_ui->SSTab1->tabBar()->hasFocus()) {
            focusFirstToFill(); // the first box of the page cannot be typed into
        }
    });
    for (QPushButton *button : {m_ui->cmdClose, m_ui->Command1}) {
        connect(button, &QPushButton::clicked, this, &QWidget::close);
    }
}

// A message about the entry stays until the next entry is begun.
void frmNotePad::connectMessage()
{
    const auto clear = [this] { m_ui->lblMessage->clear(); };
    for (const appearance::MemoBox *box :
         {m_ui->txtContent, m_ui->txtRequest, m_ui->txtResponse, m_ui->txtNote}) {
        connect(box, &appearance::MemoBox::textChanged, this, clear);
    }
    for (const QLineEdit *box : {m_ui->txtCustomerName, m_ui->txtConsultant}) {
        connect(box, &QLineEdit::textChanged, this, clear);
    }
    connect(m_ui->chkIfResolved, &QCheckBox::stateChanged, this, clear);
}

void frmNotePad::begin(const QString &customerName, int page)
{
    const QDateTime now = m_context.forms.clock.now();
    m_ui->txtCustomerName->setText(customerName);
    m_ui->dtpDate->setDate(now.date());
    m_ui->dtpTime->setTime(now.time());
    m_ui->txtCallID->setText(newCallId(now));
    m_ui->txtReport->setFocus();
    m_ui->SSTab1->setCurrentIndex(page);
    if (!customerName.isEmpty()) {
        refreshReport();
    }
}

void frmNotePad::followNames(const QHash<QString, QString> &newNames)
{
    if (m_call) {
        m_call->customerName = newNames.value(m_call->customerName, m_call->customerName);
    }
    const auto shown = newNames.constFind(m_ui->txtCustomerName->text().trimmed());
    if (shown != newNames.constEnd()) {
        m_ui->txtCustomerName->setText(*shown);
        refreshReport();
    }
}

NoteEntry frmNotePad::entry() const
{
    return {.callId = m_ui->txtCallID->text().trimmed(),
            .customerName = m_ui->txtCustomerName->text().trimmed(),
            .dateAndTime = QDateTime(m_ui->dtpDate->date(), m_ui->dtpTime->time(), Qt::UTC),
            .consultant = m_ui->txtConsultant->text().trimmed(),
            .content = m_ui->txtContent->text().trimmed(),
            .request = m_ui->txtRequest->text().trimmed(),
            .response = m_ui->txtResponse->text().trimmed(),
            .note = m_ui->txtNote->text().trimmed(),
            .ifResolved = m_ui->chkIfResolved->isChecked() ? 1 : 0};
}

bool frmNotePad::save()
{
    m_ui->SSTab1->setCurrentWidget(m_ui->pageEntry);
    NoteEntry typed = entry();
    std::optional<CallFields> loaded = m_call;
    const SavedNote saved = appearance::saveRecord(
        m_context.forms,
        appearance::recordEditor(*this, typed.customerName,
                                 [this](const QString &column) { return controlOf(column); }),
        [&] { return m_notes.save(loaded, typed); },
        [&](const core::Saved &refused, core::Whose holds) {
            CallNotes::decide(refused, holds, loaded, typed);
        });
    if (saved.written) {
        follow(saved.call);
        clearEntry();
        refreshReport(); // its page would still say that there are no notes
        m_ui->lblMessage->setText(m_context.forms.texts.Lms(u"EntrySaved"_s));
    } else if (saved.dropped) {
        m_call.reset();
        clearEntry();
    } else if (!saved.wrongField.isEmpty()) {
        controlOf(saved.wrongField)->setFocus(); // what is typed next is meant for it
    }
    return saved.written || saved.dropped;
}

// A box is named after its column.
QWidget *frmNotePad::controlOf(const QString &column) const
{
    return column == "CallContent"_L1 ? m_ui->txtContent : findChild<QWidget *>(u"txt"_s + column);
}

// Shows what somebody else has changed in the call; boxes that show the same already are left alone.
void frmNotePad::follow(const CallFields &call)
{
    m_call = call;
    const NoteEntry shown = entry();
    if (shown.customerName != call.customerName) {
        m_ui->txtCustomerName->setText(call.customerName);
    }
    if (shown.consultant != call.consultant) {
        m_ui->txtConsultant->setText(call.consultant);
    }
    if (shown.content != call.content) {
        m_ui->txtContent->setText(call.content);
    }
}

void frmNotePad::focusFirstToFill()
{
    if (m_ui->txtCustomerName->text().trimmed().isEmpty()) {
        m_ui->txtCustomerName->setFocus();
    } else if (m_ui->txtConsultant->text().trimmed().isEmpty()) {
        m_ui->txtConsultant->setFocus();
    } else {
        m_ui->txtRequest->setFocus();
    }
}

// Ready for the next entry of the same call.
void frmNotePad::clearEntry()
{
    for (appearance::MemoBox *box : {m_ui->txtRequest, m_ui->txtResponse, m_ui->txtNote}) {
        box->clear();
    }
    m_ui->chkIfResolved->setChecked(false);
    m_ui->txtContent->document()->setModified(false);
    m_ui->txtCustomerName->setModified(false);
    m_ui->txtConsultant->setModified(false);
    m_ui->txtRequest->setFocus();
}

// What the form itself has filled in is not typed.
bool frmNotePad::isUnsaved() const
{
    const NoteEntry typed = entry();
    return !(typed.request + typed.response + typed.note).isEmpty() ||
           (m_ui->txtContent->document()->isModified() && !typed.content.isEmpty()) ||
           (m_ui->txtCustomerName->isModified() && !typed.customerName.isEmpty()) ||
           (m_ui->txtConsultant->isModified() && !typed.consultant.isEmpty());
}

ReportRun *frmNotePad::readReport(const std::function<void(const QString &)> &use)
{
    const QString name = m_ui->txtCustomerName->text().trimmed();
    auto *run =
        new ReportRun(m_context.forms.log, m_context.forms.paths.CustomerFile, noteQuery(name), name, this);
    connect(run, &ReportRun::finished, this, use);
    connect(run, &ReportRun::failed, this, [this] { showReport({}, u"NotesUnreadable"_s); });
    return run;
}

void frmNotePad::refreshReport()
{
    delete m_refresh; // a longer one, of another name perhaps, would come in last
    m_refresh = readReport([this](const QString &report) { showReport(report, u"NoNotesOfCustomer"_s); });
}

void frmNotePad::showReport(const QString &report, const QString &hintKey)
{
    m_ui->txtReport->setHint(m_context.forms.texts.Lms(hintKey));
    m_ui->txtReport->setReport(report);
    m_ui->cmdExport->setEnabled(!report.isEmpty());
}

void frmNotePad::print()
{
    readReport([this](const QString &report) {
        if (report.isEmpty()) {
            m_context.forms.prompts.tell(m_context.forms.texts.Lms(u"NoNotesOfCustomer"_s));
        }
        PrintNotePad(m_context.forms.log, m_context.printer, m_context.forms.texts, m_context.language,
                     report, this);
    });
}

bool frmNotePad::mayClose()
{
    return !isUnsaved() || appearance::settleUnsaved(m_context.forms, *this,
                                                     {.name = m_ui->txtCustomerName->text(),
                                                      .question = u"SaveNoteFirst?"_s,
                                                      .save = [this] { return save(); }});
}

} // namespace notes
