#include "start/forms/frmConvertDesk.h"

#include "appearance/FormSetup.h"
#include "appearance/theme/ThemedIcons.h"
#include "start/ConversionRun.h"
#include "ui_frmConvertDesk.h"

#include <QDir>
#include <QHeaderView>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace start {

namespace {

constexpr std::chrono::milliseconds lookEvery{50};
constexpr int wholeBar = 1000;

} // namespace

frmConvertDesk::frmConvertDesk(const Context &context)
    : m_context(context), m_ui(std::make_unique<Ui::frmConvertDesk>())
{
    m_ui->setupUi(this);
    setWindowIcon(appearance::programIcon());
    m_context.translator.iniFormFonts(*this);
    m_context.translator.iniFormLang(*this);
    m_ui->lblFolder->setText(QDir::toNativeSeparators(m_context.folder));
    m_ui->lstFound->setHeaderLabels({m_context.texts.Lms(u"OldTable"_s), m_context.texts.Lms(u"OldRows"_s)});
    m_ui->lstFound->header()->setStretchLastSection(false);
    m_ui->lstFound->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    showRunning(false);
    appearance::FormSetup::fitToScreen(*this);
    connect(m_ui->cmdConvert, &QPushButton::clicked, this, &frmConvertDesk::convert);
    connect(m_ui->cmdNotNow, &QPushButton::clicked, this, &frmConvertDesk::reject);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmConvertDesk::reject);
    connect(&m_looks, &QTimer::timeout, this, &frmConvertDesk::lookOn);
    read();
}

frmConvertDesk::~frmConvertDesk() = default;

// On a thread of its own: large files on a network share take a while.
void frmConvertDesk::read()
{
    m_ui->cmdConvert->setEnabled(false);
    setCursor(Qt::BusyCursor);
    m_reading =
        std::make_unique<Reading>([folder = m_context.folder] { return conversion::oldTablesIn(folder); });
    m_looks.start(lookEvery);
}

void frmConvertDesk::endReading()
{
    m_looks.stop();
    const std::unique_ptr<Reading> reading = std::move(m_reading);
    unsetCursor();
    try {
        showFound(reading->take());
        m_ui->cmdConvert->setEnabled(true);
    } catch (const core::Error &error) {
        tellFailure(u"DeskNotConverted"_s, error);
        QDialog::reject();
    }
}

void frmConvertDesk::showFound(const QList<conversion::ConvertedFile> &found)
{
    for (const conversion::ConvertedFile &file : found) {
        auto *top = new QTreeWidgetItem(m_ui->lstFound, {file.path});
        top->setFirstColumnSpanned(true);
        for (const conversion::ConvertedTable &table : file.tables) {
            auto *row = new QTreeWidgetItem(top, {table.name, QString::number(table.rows)});
            row->setTextAlignment(1, Qt::AlignTrailing | Qt::AlignVCenter);
            m_rowsFound += table.rows;
        }
    }
    m_ui->lstFound->expandAll();
}

void frmConvertDesk::convert()
{
    showRunning(true);
    m_run = std::make_unique<ConversionRun>(m_context.folder, m_context.today);
    m_looks.start(lookEvery);
}

void frmConvertDesk::lookOn()
{
    if (m_reading) {
        if (m_reading->isDone()) {
            endReading();
        }
        return;
    }
    const qint64 expected = 2 * m_rowsFound; // each is copied, and compared
    const qint64 seen = std::min(m_run->rowsSeen(), expected);
    m_ui->prgConvert->setValue(expected > 0 ? int(seen * wholeBar / expected) : 0);
    if (m_run->isDone()) {
        end();
    }
}

void frmConvertDesk::end()
{
    m_looks.stop();
    const std::unique_ptr<ConversionRun> run = std::move(m_run);
    try {
        if (const auto report = run->takeReport()) {
            tellDone(*report);
            return accept();
        }
    } catch (const core::Error &error) {
        if (conversion::isBrokenOff(m_context.folder)) { // the next start completes it
            tellFailure(u"ConversionBrokenOff"_s, error);
            return QDialog::reject();
        }
        tellFailure(u"DeskNotConverted"_s, error);
    }
    showRunning(false);
}

void frmConvertDesk::tellDone(const conversion::Report &report)
{
    qint64 tables = 0;
    qint64 rows = 0;
    for (const conversion::ConvertedFile &file : report.files) {
        for (const conversion::ConvertedTable &table : file.tables) {
            ++tables;
            rows += table.rows;
        }
    }
    const QString text = m_context.texts.Lms(u"DeskConverted"_s)
                             .replace(u"%1"_s, QString::number(tables))
                             .replace(u"%2"_s, QString::number(rows));
    const QString where = QDir::toNativeSeparators(m_context.folder + u'/' + report.oldFiles);
    m_context.prompts.tell(text + u'\n' + where, {}, this);
}

void frmConvertDesk::tellFailure(const QString &key, const core::Error &error)
{
    m_context.prompts.tell(m_context.texts.Lms(key) + u'\n' + error.description(), {}, this);
}

void frmConvertDesk::showRunning(bool running)
{
    m_ui->cmdConvert->setVisible(!running);
    m_ui->cmdNotNow->setVisible(!running);
    m_ui->cmdCancel->setVisible(running);
    m_ui->prgConvert->setValue(0);
    m_ui->prgConvert->setMaximum(wholeBar);
    m_ui->prgConvert->setVisible(running); // an empty one looks like a box to type in
}

void frmConvertDesk::reject()
{
    if (m_run) {
        m_run->cancel();
    } else {
        QDialog::reject();
    }
}

} // namespace start
