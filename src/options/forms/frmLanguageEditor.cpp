#include "options/forms/frmLanguageEditor.h"

#include "options/forms/CellDelegate.h"
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

frmLanguageEditor::frmLanguageEditor(const appearance::FormContext &context, core::Settings &settings)
    : Form(context.services), m_context(context), m_settings(settings),
      m_ui(std::make_unique<Ui::frmLanguageEditor>()), Data1(context.log, "Data1"_L1)
{
    m_ui->setupUi(this);
    loadGrid();
    load();
    showLanguage();
    connectButtons();
    loadRows();
}

frmLanguageEditor::~frmLanguageEditor() = default;

void frmLanguageEditor::connectButtons()
{
    connect(m_ui->cmdSearch, &QPushButton::clicked, this, &frmLanguageEditor::search);
    connect(m_ui->cmdRefresh, &QPushButton::clicked, this, &frmLanguageEditor::refresh);
    connect(m_ui->cmdReturn, &QPushButton::clicked, this, &frmLanguageEditor::saveAndClose);
    offerHelp(m_context.navigator, u"Popup_LanguageEditor"_s);
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
    connect(&Data1, &store::ResultModel::lockEnded, this, [this] {
        m_ui->DBGrid1->whenNotTyping([this] { isLanguageTable(Data1) ? search() : loadRows(); });
    });
    m_ui->DBGrid1->setModel(&Data1);
    m_ui->DBGrid1->setHint(m_context.texts.Lms(u"LanguageEditorHint"_s));
    connect(m_ui->DBGrid1, &appearance::RecordGrid::recordActivated, this, &frmLanguageEditor::editRow);
    // Told a moment later: the message box must not open while the cell's editor is closing.
    const auto refused = [this](const QModelIndex &cell) {
        m_refusedCell = cell;
        QMetaObject::invokeMethod(
            this, [this] { keepTyped(); }, Qt::QueuedConnection);
    };
    const auto mayEdit = [this](int column) { return column == Data1.columnOf(u"UserLanguage"_s); };
    m_ui->DBGrid1->setItemDelegate(new CellDelegate({mayEdit, refused}, this));
}

void frmLanguageEditor::editRow(int row)
{
    const QModelIndex own = Data1.index(row, Data1.columnOf(u"UserLanguage"_s));
    if (own.isValid()) {
        m_ui->DBGrid1->setCurrentIndex(own);
        m_ui->DBGrid1->edit(own);
    }
}

bool frmLanguageEditor::keepTyped()
{
    if (m_ui->DBGrid1->isAncestorOf(focusWidget())) {
        m_ui->DBGrid1->setFocus(); // writes the text that is being typed
    }
    const QPersistentModelIndex refused = std::exchange(m_refusedCell, {});
    if (!refused.isValid()) {
        return true;
    }
    m_context.prompts.tell(m_context.texts.Lms(u"LanguageTextNotSaved"_s));
    editRow(refused.row());
    return false;
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

// Opens the file again: it may have been repaired since it could not be read.
void frmLanguageEditor::refresh()
{
    if (!keepTyped()) {
        return;
    }
    if (!isLanguageTable(Data1)) {
        loadRows();
    } else {
        showRows(Data1.refresh());
    }
}

void frmLanguageEditor::search()
{
    if (keepTyped()) {
        const QString rows = languageRows(m_ui->txtCondition->text());
        showRows(Data1.setRecordSource(m_context.paths.UserLangFile, rows));
    }
}

void frmLanguageEditor::showRows(bool read)
{
    const QString count = m_context.texts.Lms(u"LanguageEditorCount"_s) + m_context.values.WordSeparator +
                          QString::number(Data1.rowCount());
    const QString trouble = store::troubleKey(Data1.trouble(), u"LanguageFileUnreadable"_s);
    m_ui->lblState->setText(read ? count : m_context.texts.Lms(trouble));
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
    Form::resizeEvent(event);
    SetGrid();
}

void frmLanguageEditor::showEvent(QShowEvent *event)
{
    Form::showEvent(event);
    SetGrid();
}

OwnTexts frmLanguageEditor::chosenTexts() const
{
    return {.useId = m_ui->chkUseID->isChecked(), .useUser = m_ui->chkUseUserLang->isChecked()};
}

// Keeps what the operator has chosen here and not saved yet.
void frmLanguageEditor::showLanguage()
{
    const bool chosen = chosenTexts() != m_storedTexts;
    m_storedTexts = ownTexts(m_settings.record);
    if (!chosen) {
        m_ui->chkUseID->setChecked(m_storedTexts.useId);
        m_ui->chkUseUserLang->setChecked(m_storedTexts.useUser);
    }
}

void frmLanguageEditor::saveAndClose()
{
    const core::SettingsRecord before = m_settings.record;
    chooseOwnTexts(m_settings.record, chosenTexts());
    if (!m_settings.SaveMisc()) {
        m_settings.record = before; // or the next who writes the record would store it
        return m_context.prompts.tell(m_context.texts.Lms(u"OptionsNotSaved"_s));
    }
    Q_EMIT languageSaved();
    close();
}

} // namespace options
