#include "notes/forms/frmNotePadManager.h"

#include "notes/ExportText.h"
#include "notes/NoteStatements.h"
#include "notes/PrintNotePad.h"
#include "notes/ReportRun.h"
#include "ui_frmNotePadManager.h"

#include <array>

using namespace Qt::StringLiterals;

namespace notes {

namespace {

// In characters; until the operator chooses others, identifier and time are seen whole.
// In the order of the columns of MakeCondition.
constexpr std::array columnWidths{20, 22, 19, 14, 20, 24, 20, 11, 20};

// Shows a result in a grid, and has the grid drawn anew.
void ConnectDatabase(core::RunLog &log, store::ResultModel &result, appearance::RecordGrid &grid)
{
    log.trap("ConnectDatabase"_L1, [&] {
        grid.setModel(&result);
        grid.viewport()->update();
    });
}

// An answer in the current language; without its texts the key, which is English.
QString answer(const core::TextLookup &texts, const QString &key)
{
    const QString found = texts.Lms(key);
    return found.isEmpty() ? key : found;
}

} // namespace

frmNotePadManager::frmNotePadManager(const NoteContext &context, const QString &fixedCustomer)
    : Form(context.forms.services), m_context(context), m_fixedCustomer(fixedCustomer),
      m_result(context.forms.log, "GetRecordSet"_L1), m_ui(std::make_unique<Ui::frmNotePadManager>())
{
    m_ui->setupUi(this);
    m_context.forms.log.trap("frmNotePadManager_Load"_L1, [this] {
        load();
        setDefaultRange();
        fillIfResolved();
        setUpGrid();
        connectButtons();
        ShowResult();
        m_ui->txtCustomerName->setFocus();
    });
}

frmNotePadManager::~frmNotePadManager()
{
    m_result.clear();
    m_connection.close();
}

void frmNotePadManager::connectButtons()
{
    const auto onClick = [this](QPushButton *button, auto &&handler) {
        connect(button, &QPushButton::clicked, this, handler);
    };
    onClick(m_ui->cmdShowResult, [this] { ShowResult(); });
    offerHelp(m_context.forms.navigator, u"Popup_Notes_Manager"_s);
    onClick(m_ui->cmdToday, [this] {
        const QDate today = m_context.forms.clock.now().date();
        setRange(today, today);
        ShowResult();
    });
    onClick(m_ui->cmdAllDates, [this] { showAllDates(); });
    onClick(m_ui->cmdAddNew, [this] { Q_EMIT addNoteRequested(m_ui->txtCustomerName->text().trimmed()); });
    onClick(m_ui->cmdExport, [this] { exportResult(); });
    onClick(m_ui->cmdPrintOut, [this] { printResult(); });
    onClick(m_ui->cmdClose, [this] { close(); });
}

// The range is fixed: to find notes of later years, the operator has to change the end date.
void frmNotePadManager::setDefaultRange()
{
    setRange(QDate(2001, 1, 1), QDate(2009, 12, 31));
}

void frmNotePadManager::setRange(QDate first, QDate last)
{
    m_ui->dtpStartDate->setDate(first);
    m_ui->dtpStartTime->setTime(QTime(0, 0, 0));
    m_ui->dtpEndDate->setDate(last);
    m_ui->dtpEndTime->setTime(QTime(23, 59, 59));
}

// The calendars open on the days of the range, so it goes no further than the notes.
void frmNotePadManager::showAllDates()
{
    const NoteDays days = daysOfNotes(m_context.forms.log, m_context.forms.paths.CustomerFile,
                                      m_context.forms.clock.now().date());
    setRange(days.first.isValid() ? days.first : m_ui->dtpStartDate->minimumDate(),
             days.last.isValid() ? days.last : m_ui->dtpEndDate->maximumDate());
    ShowResult();
}

void frmNotePadManager::fillIfResolved()
{
    const core::TextLookup &texts = m_context.forms.texts;
    m_ui->cmbIfResolved->addItems({u" "_s, answer(texts, u"Yes"_s), answer(texts, u"No"_s)});
}

void frmNotePadManager::setUpGrid()
{
    const core::TextLookup &texts = m_context.forms.texts;
    appearance::RecordGrid &grid = *m_ui->DataGrid1;
    grid.setHint(texts.Lms(u"NoNotesFound"_s));
    m_result.setYesNo(answer(texts, u"Yes"_s), answer(texts, u"No"_s));
    grid.setRowMenu(
        {{texts.Lms(u"OpenCustomer"_s), [this, &grid] { openCustomer(grid.currentIndex().row()); }},
         {},
         {texts.Lms(u"CopyRow"_s), [&grid] { grid.copySelection(); }},
         {texts.Lms(u"CopyCell"_s), [&grid] { grid.copyCell(); }}});
    connect(&grid, &appearance::RecordGrid::recordActivated, this, &frmNotePadManager::openCustomer);
    connect(&m_result, &QAbstractItemModel::rowsInserted, this, &frmNotePadManager::showTotal);
    connect(&m_result, &store::ResultModel::readingEnded, this, [this] {
        showTotal();
        if (!m_result.isComplete()) {
            showTrouble();
        }
    });
    connect(&m_result, &store::ResultModel::readingHeldUp, this, &frmNotePadManager::showTrouble);
    connect(&m_result, &store::ResultModel::lockEnded, this, [this] { search(m_searched); });
}

void frmNotePadManager::translateHeadings()
{
    for (int column = 0; column < m_result.columnCount(); ++column) {
        const QString field = m_result.headerData(column, Qt::Horizontal).toString();
        m_result.setHeading(field, m_context.forms.texts.Lms(field));
    }
}

NoteConditions frmNotePadManager::conditions() const
{
    return {.fixedCustomer = m_fixedCustomer,
            .callId = m_ui->txtCallID->text(),
            .customerName = m_ui->txtCustomerName->text(),
            .consultant = m_ui->txtConsultant->text(),
            .start = QDateTime(m_ui->dtpStartDate->date(), m_ui->dtpStartTime->time(), Qt::UTC),
            .end = QDateTime(m_ui->dtpEndDate->date(), m_ui->dtpEndTime->time(), Qt::UTC),
            .content = m_ui->txtContent->text(),
            .request = m_ui->txtRequest->text(),
            .response = m_ui->txtResponse->text(),
            .note = m_ui->txtNote->text(),
            .ifResolved = m_ui->cmbIfResolved->currentIndex()};
}

void frmNotePadManager::ShowResult()
{
    search(conditions());
}

// What the operator has typed for the next search stays, except for the old name.
void frmNotePadManager::followNames(const QHash<QString, QString> &newNames)
{
    const auto follow = [&](const QString &name) { return newNames.value(name.trimmed(), name); };
    m_fixedCustomer = follow(m_fixedCustomer);
    m_ui->txtCustomerName->setText(follow(m_ui->txtCustomerName->text()));
    NoteConditions searched = m_searched;
    searched.fixedCustomer = m_fixedCustomer;
    searched.customerName = follow(searched.customerName);
    search(searched);
}

void frmNotePadManager::search(const NoteConditions &conditions)
{
    m_context.forms.log.trap("ShowResult"_L1, [&] {
        m_searched = conditions;
        const QString select = MakeCondition(m_context.forms.log, conditions);
        if (select.isEmpty() || !GetRecordSet(select)) {
            showTrouble();
            return offerReport();
        }
        if (m_ui->DataGrid1->model() == nullptr) {
            translateHeadings();
            ConnectDatabase(m_context.forms.log, m_result, *m_ui->DataGrid1);
            m_ui->DataGrid1->setWidths(columnWidths);
            m_ui->DataGrid1->remember(m_context.forms.services.windows, u"frmNotePadManager.DataGrid1"_s);
        }
        m_ui->DataGrid1->scrollToTop();
        showTotal();
    });
}

std::optional<QString> frmNotePadManager::onlyCustomer() const
{
    return m_fixedCustomer.isEmpty() ? std::nullopt : std::optional(m_fixedCustomer);
}

bool frmNotePadManager::GetRecordSet(const QString &select)
{
    core::RunLog &log = m_context.forms.log;
    const QString &file = m_context.forms.paths.CustomerFile;
    const bool open = m_connection.state() == store::Connection::State::Open;
    if (open && m_connection.database().isReplaced()) {
        m_result.clear();
        m_connection.close();
    }
    if (!store::ConnectDatabase(log, m_connection, file)) {
        if (store::isLocked(file)) {
            m_result.awaitLock(file);
        }
        return false;
    }
    return m_result.setRecordSource(m_connection.database(), select, noteTables(onlyCustomer()));
}

void frmNotePadManager::showTrouble()
{
    m_ui->lblTotal->setText(
        m_context.forms.texts.Lms(store::troubleKey(m_result.trouble(), u"NotesUnreadable"_s)));
}

void frmNotePadManager::showTotal()
{
    const QString more = m_result.isComplete() ? QString() : u"\u2026"_s;
    m_ui->lblTotal->setText(m_context.forms.texts.Lms(u"Totalcount"_s) + u' ' +
                            QString::number(m_result.rowCount()) + more);
    offerReport();
}

// When these buttons are disabled, the one with the keyboard would pass it on to the button that closes the
// window.
void frmNotePadManager::offerReport()
{
    const bool rows = m_result.rowCount() > 0;
    for (QPushButton *button : {m_ui->cmdExport, m_ui->cmdPrintOut}) {
        if (!rows && button->hasFocus()) {
            m_ui->cmdShowResult->setFocus();
        }
        button->setEnabled(rows);
    }
}

void frmNotePadManager::openCustomer(int row)
{
    const QString name = m_result.field(row, u"CustomerName"_s).toString();
    if (!name.isEmpty()) {
        m_context.forms.navigator.ShowCustomerByName(name);
    }
}

// The report of the result that is shown; one at a time.
void frmNotePadManager::readReport(const std::function<void(const QString &)> &use)
{
    if (m_report != nullptr) {
        return;
    }
    m_report = new ReportRun(m_context.forms.log, m_context.forms.paths.CustomerFile, m_result.recordSource(),
                             onlyCustomer(), this);
    setCursor(Qt::BusyCursor);
    connect(m_report, &ReportRun::finished, this, [this, use](const QString &report) {
        unsetCursor();
        use(report);
    });
    connect(m_report, &ReportRun::failed, this, [this] {
        unsetCursor();
        m_context.forms.prompts.tell(m_context.forms.texts.Lms(u"NotesUnreadable"_s));
    });
}

void frmNotePadManager::exportResult()
{
    readReport([this](const QString &report) {
        const appearance::FormContext &forms = m_context.forms;
        ExportText(forms.log, forms.paths, forms.prompts, forms.shell, forms.texts, report);
    });
}

void frmNotePadManager::printResult()
{
    readReport([this](const QString &report) {
        PrintNotePad(m_context.forms.log, m_context.printer, m_context.forms.texts, m_context.language,
                     report, this);
    });
}

} // namespace notes
