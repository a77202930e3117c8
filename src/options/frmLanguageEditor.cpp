#include "options/frmLanguageEditor.h"

#include "appearance/Keys.h"
#include "appearance/ThemedIcons.h"
#include "options/CellDelegate.h"
#include "options/LanguageEdit.h"
#include "ui_frmLanguageEditor.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace options {

namespace {

bool isLanguageTable(const store::ResultModel &rows)
{
    return rows.columnOf(u"Item"_s) >= 0 && rows.columnOf(u"UserLanguage"_s) >= 0 &&
           rows.columnOf(u"english"_s) >= 0;
}

} // namespace

frmLanguageEditor::frmLanguageEditor(const appearance::FormContext &context, core::Settings &settings,
                                     std::function<void()> languageChosen)
    : QDialog(nullptr, Qt::Window), m_context(context), m_settings(settings),
      m_languageChosen(std::move(languageChosen)), m_ui(std::make_unique<Ui::frmLanguageEditor>()),
      Data1(context.log, "Data1"_L1), m_setup(context.services)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(appearance::programIcon());
    loadGrid();
    m_setup.load(*this);
    const OwnTexts texts = ownTexts(m_settings.record);
    m_ui->chkUseID->setChecked(texts.useId);
    m_ui->chkUseUserLang->setChecked(texts.useUser);
    connectButtons();
    loadRows();
}

frmLanguageEditor::~frmLanguageEditor()
{
    m_setup.unload();
}

void frmLanguageEditor::connectButtons()
{
    connect(m_ui->cmdSearch, &QPushButton::clicked, this, &frmLanguageEditor::search);
    connect(m_ui->cmdRefresh, &QPushButton::clicked, this, &frmLanguageEditor::refresh);
    connect(m_ui->cmdReturn, &QPushButton::clicked, this, &frmLanguageEditor::saveAndClose);
    appearance::onHelpKey(*this, m_context.navigator, u"Popup_LanguageEditor"_s);
}

void frmLanguageEditor::loadGrid()
{
    Data1.setObjectName(u"Data1"_s);
    Data1.setEditable(true);
    Data1.setHeading(u"Item"_s, m_context.texts.Lms(u"LanguageEditorKey"_s));
    Data1.setHeading(u"UserLanguage"_s, m_context.texts.Lms(u"LanguageEditorOwn"_s));
    Data1.setHeading(u"english"_s, m_context.texts.Lms(u"LanguageEditorEnglish"_s));
    connect(&Data1, &store::ResultModel::readingEnded, this, [this] { showRows(Data1.isComplete()); });
    connect(&Data1, &store::ResultModel::readingHeldUp, this, [this] { showRows(false); });
    connect(&Data1, &store::ResultModel::lockEnded, this,
            [this] { isLanguageTable(Data1) ? search() : loadRows(); });
    m_ui->DBGrid1->setModel(&Data1);
    m_ui->DBGrid1->setHint(m_context.texts.Lms(u"LanguageEditorHint"_s));
    connect(m_ui->DBGrid1, &appearance::RecordGrid::recordActivated, this,
            [this] { m_ui->DBGrid1->edit(m_ui->DBGrid1->currentIndex()); });
    // Told later: the box must not open in the middle of the editor's closing.
    const auto refused = [this] {
        m_textRefused = true;
        QMetaObject::invokeMethod(
            this, [this] { tellRefusal(); }, Qt::QueuedConnection);
    };
    m_ui->DBGrid1->setItemDelegate(new CellDelegate(refused, this));
}

bool frmLanguageEditor::tellRefusal()
{
    const bool refused = std::exchange(m_textRefused, false);
    if (refused) {
        m_context.prompts.tell(m_context.texts.Lms(u"LanguageTextNotSaved"_s));
    }
    return refused;
}

void frmLanguageEditor::loadRows()
{
    const bool read = m_context.log.trap("frmLanguageEditor_Load"_L1, [&] {
        const bool shown = Data1.setRecordSource(m_context.paths.UserLangFile, u"language"_s);
        if (!shown || !isLanguageTable(Data1)) {
            throw core::Error(0, u"these are no texts of a language: "_s + m_context.paths.UserLangFile);
        }
    });
    showRows(read);
}

// The file may have been put right since it could not be read.
void frmLanguageEditor::refresh()
{
    if (!isLanguageTable(Data1)) {
        loadRows();
    } else {
        showRows(Data1.refresh());
    }
}

void frmLanguageEditor::search()
{
    const QString rows = languageRows(m_ui->txtCondition->text());
    showRows(Data1.setRecordSource(m_context.paths.UserLangFile, rows));
}

void frmLanguageEditor::showRows(bool read)
{
    const QString separator = m_context.values.WordSeparator;
    const QString trouble = store::troubleKey(Data1.trouble(), u"LanguageFileUnreadable"_s);
    m_ui->lblState->setText(read ? m_context.texts.Lms(u"LanguageEditorCount"_s) + separator +
                                       QString::number(Data1.rowCount())
                                 : m_context.texts.Lms(trouble));
    SetGrid();
}

void frmLanguageEditor::SetGrid()
{
    const int columns = Data1.columnCount();
    for (int column = 0; column < columns; ++column) {
        m_ui->DBGrid1->setColumnWidth(column, m_ui->DBGrid1->viewport()->width() / columns);
    }
}

void frmLanguageEditor::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    SetGrid();
}

void frmLanguageEditor::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    SetGrid();
}

void frmLanguageEditor::saveAndClose()
{
    chooseOwnTexts(m_settings.record,
                   {.useId = m_ui->chkUseID->isChecked(), .useUser = m_ui->chkUseUserLang->isChecked()});
    if (!m_settings.SaveMisc()) {
        m_context.prompts.tell(m_context.texts.Lms(u"OptionsNotSaved"_s));
    }
    m_languageChosen();
    accept();
}

void frmLanguageEditor::done(int result)
{
    m_ui->DBGrid1->setFocus(); // writes the text that is being typed
    if (tellRefusal()) {
        return;
    }
    m_setup.rememberGeometry(*this);
    QDialog::done(result);
}

} // namespace options
