#include "customers/forms/frmAddDataToExcel_Tarn20050921.h"

#include "customers/CustomerQueries.h"
#include "ui_frmAddDataToExcel_Tarn20050921.h"

#include <QKeyEvent>

#include <numeric>

using namespace Qt::StringLiterals;

namespace customers {

namespace {

constexpr std::chrono::milliseconds betweenLooks{20};
constexpr int titleBarButtons = 200;

} // namespace

frmAddDataToExcel_Tarn20050921::frmAddDataToExcel_Tarn20050921(const appearance::FormContext &context)
    : Form(context.services), m_context(context), m_ui(std::make_unique<Ui::frmAddDataToExcel_Tarn20050921>())
{
    m_ui->setupUi(this);
    load();
    setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) + titleBarButtons);
    fillFields();
    showCount();
    showRunning(false);
    connect(m_ui->cmdCheckAll, &QPushButton::clicked, this, [this] { tickAll(true); });
    connect(m_ui->cmdUnCheckAll, &QPushButton::clicked, this, [this] { tickAll(false); });
    connect(m_ui->cmdAddToExcel, &QPushButton::clicked, this, &frmAddDataToExcel_Tarn20050921::exportTicked);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmAddDataToExcel_Tarn20050921::cancel);
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &QWidget::close);
    offerHelp(m_context.navigator, u"Popup_Export"_s);
    connect(&m_looks, &QTimer::timeout, this, &frmAddDataToExcel_Tarn20050921::look);
}

frmAddDataToExcel_Tarn20050921::~frmAddDataToExcel_Tarn20050921() = default;

void frmAddDataToExcel_Tarn20050921::fillFields()
{
    QList<int> all(exportFieldCount);
    std::iota(all.begin(), all.end(), 0);
    m_ui->lstDataFields->addItems(headings(all));
    tickAll(true);
    m_ui->lstDataFields->setCurrentRow(0);
}

void frmAddDataToExcel_Tarn20050921::showCount()
{
    m_context.log.trap("frmAddDataToExcel_Tarn20050921_Load"_L1, [this] {
        store::Database database(m_context.paths.CustomerFile, store::Database::Mode::ReadOnly);
        const int count = CustomerExport::countCustomers(database);
        m_ui->lblCount->setText(
            m_context.texts.Lms(u"AllCustomersExported"_s).replace(u"%1"_s, QString::number(count)));
    });
}

void frmAddDataToExcel_Tarn20050921::tickAll(bool ticked)
{
    for (int row = 0; row < m_ui->lstDataFields->count(); ++row) {
        m_ui->lstDataFields->item(row)->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    }
}

QList<int> frmAddDataToExcel_Tarn20050921::tickedFields() const
{
    QList<int> ticked;
    for (int row = 0; row < m_ui->lstDataFields->count(); ++row) {
        if (m_ui->lstDataFields->item(row)->checkState() == Qt::Checked) {
            ticked.append(row);
        }
    }
    return ticked;
}

QStringList frmAddDataToExcel_Tarn20050921::headings(const QList<int> &fields) const
{
    QStringList titles;
    for (const int place : fields) {
        const QString key = exportFields().at(static_cast<size_t>(place)).labelKey;
        const QString text = m_context.texts.Lms(key);
        titles.append(text.isEmpty() ? key : text);
    }
    return titles;
}

void frmAddDataToExcel_Tarn20050921::exportTicked()
{
    m_ui->cmdAddToExcel->setEnabled(false);
    const QString proposed = u"%1 %2.xlsx"_s.arg(m_context.texts.Lms(u"CustomerDatabase"_s),
                                                 m_context.clock.now().toString(u"yyyy-MM-dd"_s));
    m_target = m_context.prompts.saveFileName(proposed, u"(*.xlsx)|*.xlsx"_s);
    if (m_target.isEmpty()) {
        return showRunning(false);
    }
    showRunning(true);
    const bool begun = m_context.log.trap("cmdAddToExcel"_L1, [this] {
        const QList<int> fields = tickedFields();
        m_export = std::make_unique<CustomerExport>(
            m_context.paths.CustomerFile, exportQuery(fields, u"rowid,"_s), headings(fields), m_target);
    });
    if (begun) {
        m_looks.start(betweenLooks);
    } else {
        end(u"Error!"_s);
    }
}

void frmAddDataToExcel_Tarn20050921::look()
{
    bool ended = false;
    const bool done = m_context.log.trap("cmdAddToExcel"_L1, [&] { ended = m_export->hasEnded(); });
    showProgress();
    if (!done) {
        end(u"Error!"_s);
    } else if (ended) {
        m_looks.stop(); // Windows may handle other events while a file is being opened
        m_context.shell.openFile(m_target);
        end(u"Success!"_s);
    }
}

void frmAddDataToExcel_Tarn20050921::cancel()
{
    if (m_export && m_export->drop()) {
        end({});
    }
}

void frmAddDataToExcel_Tarn20050921::end(const QString &outcome)
{
    m_looks.stop();
    m_export.reset();
    if (!outcome.isEmpty()) {
        m_context.prompts.tell(outcome);
    }
    showRunning(false);
}

void frmAddDataToExcel_Tarn20050921::showProgress()
{
    const bool packing = m_export->isPacking();
    m_ui->prgExport->setMaximum(packing ? 0 : m_export->rowCount()); // 0: busy, for no known time
    m_ui->prgExport->setValue(m_export->rowsWritten());
    m_ui->cmdCancel->setEnabled(!packing);
}

void frmAddDataToExcel_Tarn20050921::showRunning(bool running)
{
    m_ui->cmdAddToExcel->setEnabled(!running);
    m_ui->cmdClose->setEnabled(!running);
    m_ui->lstDataFields->setEnabled(!running);
    m_ui->cmdCheckAll->setEnabled(!running);
    m_ui->cmdUnCheckAll->setEnabled(!running);
    m_ui->cmdCancel->setEnabled(running);
    m_ui->prgExport->setMaximum(1);
    m_ui->prgExport->setValue(0);
    m_ui->prgExport->setVisible(running); // an empty one looks like a box to type in
}

void frmAddDataToExcel_Tarn20050921::keyPressEvent(QKeyEvent *event)
{
    if (m_export && event->matches(QKeySequence::Cancel)) {
        cancel();
    } else {
        Form::keyPressEvent(event);
    }
}

bool frmAddDataToExcel_Tarn20050921::mayClose()
{
    if (!m_export || m_export->drop()) {
        return true;
    }
    bringToFront(); // it shows that it is still at work
    return false;
}

void frmAddDataToExcel_Tarn20050921::closing()
{
    m_looks.stop();
}

} // namespace customers
