#include "imports/forms/frmImport.h"

#include "core/AtomicFile.h"
#include "core/TextUtilities.h"
#include "imports/ForeignText.h"
#include "imports/RefusalText.h"
#include "store/Database.h"
#include "ui_frmImport.h"

#include <QDir>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr std::chrono::milliseconds betweenLooks{20};
constexpr qsizetype previewRows = 100;
constexpr qsizetype mostShownRefusals = 1000; // the list that can be saved has all
constexpr int wholeBar = 1000;
constexpr QByteArrayView offeredSeparators(",;\t|");

} // namespace

frmImport::frmImport(const Context &context)
    : Form(context.forms.services), m_context(context), m_texts(context.forms.texts),
      m_ui(std::make_unique<Ui::frmImport>())
{
    m_ui->setupUi(this);
    setWindowTitle(m_context.title); // translated as the designed one would be
    load();
    fillChoices();
    connectControls();
    showForm();
    showState();
    m_ui->cmdChoose->setFocus();
}

// Also where nobody has closed it: a look would read a large file to its end.
frmImport::~frmImport()
{
    m_isClosing = true;
}

void frmImport::fillChoices()
{
    for (const int codePage : offeredCodePages()) {
        m_ui->cboEncoding->addItem(codePageName(codePage), codePage);
    }
    for (const char separator : offeredSeparators) {
        m_ui->cboSeparator->addItem(
            separator == '\t' ? m_texts.Lms(u"ImportTab"_s) : QString(QLatin1Char(separator)), separator);
    }
    QStringList fields;
    m_ui->cboFixed->addItem(m_texts.Lms(u"ImportNoField"_s), -1);
    for (const TargetField &field : m_context.target.fields) {
        fields.append(captionOf(m_texts, field));
        m_ui->cboFixed->addItem(fields.last(), int(fields.size()) - 1);
    }
    m_ui->tblRows->setChoices(m_texts.Lms(u"ImportNoField"_s), fields);
    for (const RowKey key : {RowKey::Number, RowKey::Id, RowKey::Name, RowKey::Nothing}) {
        const QList<int> told = m_context.target.fieldsOf(key);
        if (key == RowKey::Nothing) {
            m_ui->cboIdentify->addItem(m_texts.Lms(u"ImportAllNew"_s), int(key));
        } else if (!told.isEmpty()) {
            m_ui->cboIdentify->addItem(fields.at(told.first()), int(key));
        }
    }
    for (const auto &[choice, text] : {std::pair(OnFile::Stays, u"ImportStays"_s),
                                       {OnFile::FilledIn, u"ImportFilledIn"_s},
                                       {OnFile::Overwritten, u"ImportOverwritten"_s}}) {
        m_ui->cboOnFile->addItem(m_texts.Lms(text), int(choice));
    }
}

void frmImport::connectControls()
{
    connect(m_ui->cmdChoose, &QPushButton::clicked, this, &frmImport::chooseFile);
    for (QComboBox *box : {m_ui->cboEncoding, m_ui->cboSeparator, m_ui->cboSheet}) {
        connect(box, &QComboBox::currentIndexChanged, this, &frmImport::lookAgain);
    }
    connect(m_ui->chkHeadings, &QCheckBox::toggled, this, [this] {
        if (!m_isFilling) {
            showRows();
        }
    });
    connect(m_ui->tblRows, &MappedPreview::fieldsChanged, this, &frmImport::forgetReport);
    for (QComboBox *box : {m_ui->cboFixed, m_ui->cboIdentify, m_ui->cboOnFile}) {
        connect(box, &QComboBox::currentIndexChanged, this, &frmImport::forgetReport);
    }
    connect(m_ui->txtFixed, &QLineEdit::textChanged, this, &frmImport::forgetReport);
    connect(m_ui->cmdCheck, &QPushButton::clicked, this, [this] { begin(ListImport::Mode::Check); });
    connect(m_ui->cmdImport, &QPushButton::clicked, this, [this] { begin(ListImport::Mode::Write); });
    connect(m_ui->cmdSaveList, &QPushButton::clicked, this, &frmImport::saveRefusals);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmImport::cancel);
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(&m_looks, &QTimer::timeout, this, &frmImport::lookOn);
    offerHelp(m_context.forms.navigator, u"Popup_Import"_s, {m_ui->cmdHelp});
}

void frmImport::chooseFile()
{
    const QString path = m_context.forms.prompts.openFileName(
        u"(*.csv *.tsv *.txt *.xlsx *.vcf)|*.csv *.tsv *.txt *.xlsx *.vcf|(*.*)|*"_s);
    if (!path.isEmpty()) {
        m_path = path;
        m_ui->txtFile->setText(QDir::toNativeSeparators(path));
        m_list = {};
        lookInto({});
    }
}

// On a thread of its own: a large workbook takes a moment before its first row is known.
void frmImport::lookInto(const std::optional<ListForm> &form)
{
    forgetReport();
    const auto work = [this, path = m_path, target = m_context.target, codePage = m_context.codePage, form] {
        const auto stops = [this] { return m_isClosing.load(); };
        Look look{.form = form ? *form : formOf(path, codePage, stops), .rows = {}, .guess = {}};
        const std::unique_ptr<RowSource> source = openList(path, look.form, stops);
        while (look.rows.size() <= previewRows) {
            const std::optional<SourceRow> row = source->next();
            if (!row) {
                break;
            }
            look.rows.append(row->cells);
        }
        look.guess = guessOf(target, look.form.kind, look.rows);
        return look;
    };
    m_look = std::make_unique<core::Background<Look>>(work);
    m_looks.start(betweenLooks);
    showState();
}

void frmImport::lookAgain()
{
    if (m_isFilling || m_path.isEmpty()) {
        return;
    }
    ListForm form = m_list.form;
    form.codePage = m_ui->cboEncoding->currentData().toInt();
    if (m_ui->cboSeparator->currentIndex() >= 0) { // else the file names another sign
        form.separator = static_cast<char>(m_ui->cboSeparator->currentData().toInt());
    }
    form.sheet = std::max(m_ui->cboSheet->currentIndex(), 0);
    lookInto(form);
}

void frmImport::endLook()
{
    const auto look = std::move(m_look);
    m_looks.stop();
    const bool isRead = attempt("ImportLook"_L1, u"ListUnreadable"_s, [&] { m_list = look->take(); });
    showForm(); // as it was, where another one did not do
    if (!isRead) {
        return showState();
    }
    m_isFilling = true;
    m_ui->chkHeadings->setChecked(m_list.guess.hasHeadings);
    m_isFilling = false;
    showRows();
}

void frmImport::showForm()
{
    m_isFilling = true;
    const ListForm &form = m_list.form;
    const bool isText = form.kind == ListKind::Text;
    const bool isWorkbook = form.kind == ListKind::Workbook;
    m_ui->cboEncoding->setCurrentIndex(m_ui->cboEncoding->findData(form.codePage));
    m_ui->cboSeparator->setCurrentIndex(m_ui->cboSeparator->findData(form.separator));
    m_ui->cboSheet->clear();
    for (const QString &sheet : form.sheets) {
        m_ui->cboSheet->addItem(core::shownText(sheet));
    }
    m_ui->cboSheet->setCurrentIndex(form.sheet);
    for (QWidget *control : std::initializer_list<QWidget *>{m_ui->lblEncoding, m_ui->cboEncoding}) {
        control->setVisible(!isWorkbook);
    }
    for (QWidget *control : std::initializer_list<QWidget *>{m_ui->lblSeparator, m_ui->cboSeparator}) {
        control->setVisible(isText);
    }
    for (QWidget *control : std::initializer_list<QWidget *>{m_ui->lblSheet, m_ui->cboSheet}) {
        control->setVisible(isWorkbook);
    }
    m_ui->chkHeadings->setVisible(form.kind != ListKind::Cards);
    m_isFilling = false;
}

void frmImport::showRows()
{
    const bool hasHeadings = m_ui->chkHeadings->isChecked();
    const bool areKeys = m_list.form.kind == ListKind::Cards;
    QList<QStringList> rows = m_list.rows;
    QStringList headings = hasHeadings && !rows.isEmpty() ? rows.takeFirst() : QStringList();
    for (QString &heading : headings) {
        heading = areKeys ? m_texts.Lms(heading) : heading;
    }
    const QList<int> fields = hasHeadings == m_list.guess.hasHeadings
                                  ? m_list.guess.fieldOfColumn
                                  : fieldsOf(m_context.target, hasHeadings, m_list.rows);
    m_ui->tblRows->showRows(headings, rows.mid(0, previewRows), fields);
    for (int choice = 0; choice < m_ui->cboIdentify->count(); ++choice) { // the surest that the list has
        const auto key = static_cast<RowKey>(m_ui->cboIdentify->itemData(choice).toInt());
        const QList<int> told = m_context.target.fieldsOf(key);
        if (told.isEmpty() || std::ranges::any_of(told, [&](int field) { return fields.contains(field); })) {
            m_ui->cboIdentify->setCurrentIndex(choice);
            break;
        }
    }
    forgetReport();
}

ListPlan frmImport::plan() const
{
    return {.form = m_list.form,
            .hasHeadings = m_ui->chkHeadings->isChecked(),
            .fieldOfColumn = m_ui->tblRows->fieldOfColumn(),
            .fixedField = m_ui->cboFixed->currentData().toInt(),
            .fixedText = m_ui->txtFixed->text(),
            .identify = static_cast<RowKey>(m_ui->cboIdentify->currentData().toInt()),
            .onFile = static_cast<OnFile>(m_ui->cboOnFile->currentData().toInt())};
}

void frmImport::begin(ListImport::Mode mode)
{
    forgetReport();
    m_mode = mode;
    m_import = std::make_unique<ListImport>(m_context.target, m_path, plan(), mode, m_context.copyDesk);
    m_looks.start(betweenLooks);
    showState();
}

void frmImport::lookOn()
{
    if (m_look && m_look->isDone()) {
        endLook();
    } else if (m_import) {
        m_ui->prgImport->setValue(m_import->perMille());
        if (m_import->isDone()) {
            endImport();
        }
    }
}

void frmImport::endImport()
{
    const std::unique_ptr<ListImport> ended = std::move(m_import);
    m_looks.stop();
    ImportReport report;
    const bool done = attempt("ImportList"_L1, u"NothingImported"_s, [&] { report = ended->take(); });
    if (done) {
        showReport(report);
        m_isImported = m_mode == ListImport::Mode::Write && !report.isCancelled;
        if (m_isImported && report.added + report.changed > 0) {
            m_context.imported(report);
        }
    }
    showState();
}

void frmImport::showReport(const ImportReport &report)
{
    QString text = m_texts.Lms(u"NothingImported"_s);
    if (!report.isCancelled) {
        text = m_texts.Lms(m_mode == ListImport::Mode::Write ? u"ListImported"_s : u"ListWouldBeImported"_s);
        for (const auto &[sign, count] : {std::pair(u"%1"_s, report.added),
                                          {u"%2"_s, report.changed},
                                          {u"%3"_s, report.kept},
                                          {u"%4"_s, qint64(report.refused.size())}}) {
            text.replace(sign, QString::number(count));
        }
    }
    m_ui->lblResult->setText(text);
    m_refused = report.refused;
    for (const RefusedRow &refused : m_refused.first(std::min(m_refused.size(), mostShownRefusals))) {
        m_ui->lstRefused->addItem(refusalText(m_texts, m_context.target, refused));
    }
}

void frmImport::saveRefusals()
{
    const QString path =
        m_context.forms.prompts.saveFileName(m_texts.Lms(m_context.title) + u".txt"_s, u"(*.txt)|*.txt"_s);
    if (path.isEmpty()) {
        return;
    }
    attempt("ImportSaveList"_L1, u"ListNotSaved"_s, [&] {
        QString text;
        for (const RefusedRow &refused : std::as_const(m_refused)) {
            text += refusalText(m_texts, m_context.target, refused) + u"\r\n"_s;
        }
        core::saveAtomically(path, text.toUtf8());
    });
}

void frmImport::cancel()
{
    if (m_import) {
        m_import->cancel();
    }
}

// What was found no longer tells what would happen.
void frmImport::forgetReport()
{
    if (m_isFilling || m_import) {
        return;
    }
    m_isImported = false;
    m_refused.clear();
    m_ui->lstRefused->clear();
    m_ui->lblResult->clear();
    showState();
}

void frmImport::showState()
{
    const bool busy = m_look || m_import;
    const bool ready = !busy && !m_list.rows.isEmpty();
    for (QWidget *control :
         std::initializer_list<QWidget *>{m_ui->tblRows, m_ui->chkHeadings, m_ui->cboFixed, m_ui->txtFixed,
                                          m_ui->cboIdentify, m_ui->cboOnFile, m_ui->cmdCheck}) {
        control->setEnabled(ready);
    }
    for (QComboBox *control : {m_ui->cboEncoding, m_ui->cboSeparator, m_ui->cboSheet}) {
        control->setEnabled(!busy && !m_path.isEmpty()); // another form may find rows where this one has none
    }
    m_ui->cmdImport->setEnabled(ready && !m_isImported);
    m_ui->cmdChoose->setEnabled(!busy);
    m_ui->cmdCancel->setEnabled(m_import != nullptr);
    m_ui->lstRefused->setVisible(!m_refused.isEmpty());
    m_ui->cmdSaveList->setVisible(!m_refused.isEmpty());
    m_ui->prgImport->setVisible(m_import != nullptr); // an empty one looks like a box to type in
    m_ui->prgImport->setMaximum(wholeBar);
    m_ui->prgImport->setValue(0);
}

// False after a failure, which is logged and told.
bool frmImport::attempt(QLatin1StringView procedure, const QString &failureKey,
                        const std::function<void()> &work)
{
    QString reason;
    const bool done = m_context.forms.log.trap(procedure, [&] {
        try {
            work();
        } catch (const core::Error &error) {
            reason = store::tellsOfLock(error) ? m_texts.Lms(u"HeldElsewhere"_s)
                                               : core::shownText(error.description());
            throw;
        }
    });
    if (!done) {
        m_ui->lblResult->setText(m_texts.Lms(failureKey) + u'\n' + reason);
    }
    return done;
}

void frmImport::keyPressEvent(QKeyEvent *event)
{
    if (m_import && event->matches(QKeySequence::Cancel)) {
        cancel();
    } else {
        Form::keyPressEvent(event);
    }
}

void frmImport::closing()
{
    m_looks.stop();
    m_isClosing = true;
    cancel();
}

} // namespace imports
