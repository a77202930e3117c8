#include "options/forms/frmOptions.h"

#include "appearance/SaveRecord.h"
#include "ui_frmOptions.h"

#include <QKeyEvent>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace options {

namespace {

constexpr int remarkRole = Qt::UserRole;
constexpr int columnRole = Qt::UserRole + 1; // the name of a column of the grid

// Shows the remark on an item behind its text.
class RemarkDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const QString remark = index.data(remarkRole).toString();
        option->text += remark.isEmpty() ? QString() : u"   "_s + remark;
        if (!remark.isEmpty() && index.data(columnRole).isValid()) { // a column that is not shown
            option->palette.setBrush(QPalette::Text, option->palette.placeholderText());
        }
    }
};

// A language's own name, or what the code stands for.
QString languageName(const QString &code, const core::TextLookup &texts)
{
    if (code == "AUTO"_L1) {
        return texts.Lms(u"LanguageOfSystem"_s);
    }
    if (code == "USER"_L1) {
        return texts.Lms(u"LanguageOfUser"_s);
    }
    return code == "ID"_L1 ? texts.Lms(u"LanguageOfKeys"_s) : ownLanguageName(code);
}

} // namespace

frmOptions::frmOptions(const appearance::FormContext &context, const OptionsLogic::Context &options,
                       std::function<void()> showLanguageEditor)
    : Form(context.services), m_context(context), m_logic(options), m_effects(options.effects),
      m_showLanguageEditor(std::move(showLanguageEditor)), m_ui(std::make_unique<Ui::frmOptions>())
{
    m_ui->setupUi(this);
    loadLanguages();
    load();
    showPopUpPage();
    showPort();
    showSenders();
    Init_lstGridCallerIDShowOrder_tarn();
    connectButtons();
    m_ui->cmdUp->setEnabled(false);
    m_ui->cmdDown->setEnabled(false);
    m_ui->SSTab1->setCurrentIndex(0);
    m_ui->CmbLanguage->setCurrentText(m_logic.systemPage().language);
    m_ui->lblLanguageName->setText(m_ui->CmbLanguage->currentData().toString());
    m_storedPopUp = popUpPage();
    m_storedSystem = systemPage();
}

frmOptions::~frmOptions() = default;

void frmOptions::loadLanguages()
{
    for (const QString &code : languageCodes()) {
        m_ui->CmbLanguage->addItem(code, languageName(code, m_context.texts));
    }
    m_ui->CmbLanguage->setItemDelegate(new RemarkDelegate(m_ui->CmbLanguage));
    m_ui->CmbLanguage->setMaxVisibleItems(m_ui->CmbLanguage->count());
    m_ui->CmbLanguage->view()->setMinimumWidth(m_ui->CmbLanguage->view()->sizeHintForColumn(0) + 32);
    m_ui->CmbLanguage->installEventFilter(this);
    connect(m_ui->CmbLanguage, &QComboBox::currentIndexChanged, this,
            [this] { m_ui->lblLanguageName->setText(m_ui->CmbLanguage->currentData().toString()); });
}

void frmOptions::connectButtons()
{
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->Command2, &QPushButton::clicked, this, &frmOptions::savePopUpPage);
    connect(m_ui->Command3, &QPushButton::clicked, this, &frmOptions::saveSystemPage);
    connect(m_ui->cmdUp, &QPushButton::clicked, this, [this] { moveColumn(-1); });
    connect(m_ui->cmdDown, &QPushButton::clicked, this, [this] { moveColumn(1); });
    connect(m_ui->lstGridCallerIDShowOrder, &QListWidget::currentRowChanged, this, [this](int row) {
        m_ui->cmdUp->setEnabled(row >= 0);
        m_ui->cmdDown->setEnabled(row >= 0);
    });
    connect(m_ui->cmdLanguageEditor, &QPushButton::clicked, this, [this] {
        if (m_logic.mayEditLanguage()) {
            m_showLanguageEditor();
        }
    });
    connect(m_ui->cmdCopies, &QPushButton::clicked, this,
            [this] { m_context.navigator.show(core::Window::Copies); });
    connect(m_ui->SSTab1, &QTabWidget::currentChanged, this, [this] {
        m_ui->lblPopUpSaved->clear();
        m_ui->lblSystemSaved->clear();
    });
    offerHelp(m_context.navigator, [this] { return helpId(); }, {m_ui->Command4, m_ui->Command5});
}

QString frmOptions::helpId() const
{
    return m_ui->SSTab1->currentWidget() == m_ui->pagePopUp ? u"Popup_Options_Options"_s
                                                            : u"Popup_System_Options"_s;
}

void frmOptions::showPopUpPage()
{
    const OptionsLogic::PopUpPage page = m_logic.popUpPage();
    m_ui->ChkPopAll->setChecked(page.popAll);
    m_ui->ChkPopDetail->setChecked(page.popDetail);
    m_ui->chkShowInfo->setChecked(page.showInfo);
}

void frmOptions::showPort()
{
    m_ui->txtPort->setText(m_logic.systemPage().port);
}

// A list that cannot be read is not offered for editing: saving would overwrite it.
void frmOptions::showSenders()
{
    const std::optional<QString> text = m_logic.systemPage().senders;
    m_ui->txtSenders->setEnabled(text.has_value());
    m_ui->txtSenders->setPlainText(text.value_or(QString()));
    const QString trouble = m_logic.sendersTrouble();
    m_ui->lblSendersTrouble->setText(trouble);
    m_ui->lblSendersTrouble->setVisible(!trouble.isEmpty());
}

// Keeps what the operator has chosen here and not saved yet.
void frmOptions::showLanguage()
{
    const bool chosen = m_ui->CmbLanguage->currentText() != m_storedSystem.language;
    m_storedSystem.language = m_logic.systemPage().language;
    if (!chosen) {
        m_ui->CmbLanguage->setCurrentText(m_storedSystem.language);
    }
}

void frmOptions::Init_lstGridCallerIDShowOrder_tarn()
{
    m_ui->lstGridCallerIDShowOrder->setItemDelegate(new RemarkDelegate(m_ui->lstGridCallerIDShowOrder));
    m_context.log.trap("Init_lstGridCallerIDShowOrder_tarn"_L1, [&] {
        m_ui->lstGridCallerIDShowOrder->clear();
        const QStringList names = m_logic.systemPage().columns;
        const QStringList hidden = m_effects.hiddenGridColumns();
        const QString notShown = m_context.texts.Lms(u"ColumnNotShown"_s);
        for (const QString &name : names) {
            auto *item = new QListWidgetItem(m_logic.columnTitle(name), m_ui->lstGridCallerIDShowOrder);
            item->setData(columnRole, name);
            if (hidden.contains(name)) {
                item->setData(remarkRole, notShown);
                item->setData(Qt::AccessibleTextRole, item->text() + u' ' + notShown);
            }
        }
    });
}

void frmOptions::moveColumn(int rows)
{
    QListWidget &list = *m_ui->lstGridCallerIDShowOrder;
    const int from = list.currentRow();
    const int to = from + rows;
    if (from >= 0 && to >= 0 && to < list.count()) {
        list.insertItem(to, list.takeItem(from));
        list.setCurrentRow(to);
    }
}

QStringList frmOptions::columnNames() const
{
    QStringList names;
    for (int row = 0; row < m_ui->lstGridCallerIDShowOrder->count(); ++row) {
        names.append(m_ui->lstGridCallerIDShowOrder->item(row)->data(columnRole).toString());
    }
    return names;
}

OptionsLogic::PopUpPage frmOptions::popUpPage() const
{
    return {.popAll = m_ui->ChkPopAll->isChecked(),
            .popDetail = m_ui->ChkPopDetail->isChecked(),
            .showInfo = m_ui->chkShowInfo->isChecked()};
}

OptionsLogic::SystemPage frmOptions::systemPage() const
{
    OptionsLogic::SystemPage page = {.language = m_ui->CmbLanguage->currentText(),
                                     .port = m_ui->txtPort->text(),
                                     .columns = columnNames(),
                                     .senders = {}};
    if (m_ui->txtSenders->isEnabled()) {
        page.senders = m_ui->txtSenders->toPlainText();
    }
    return page;
}

bool frmOptions::savePopUpPage()
{
    const bool saved = m_logic.savePopUpPage(popUpPage());
    m_ui->lblPopUpSaved->setText(savedText(saved));
    if (saved) {
        m_storedPopUp = popUpPage();
    }
    return saved;
}

// A refused port is replaced by the one in use; a refused list of senders stays in its box to be corrected.
bool frmOptions::saveSystemPage()
{
    OptionsLogic::SystemPage page = systemPage();
    if (page.senders == m_storedSystem.senders) {
        page.senders.reset(); // somebody else may have made another list meanwhile
    }
    const OptionsLogic::SavedSystem saved = m_logic.saveSystemPage(page);
    m_ui->lblSystemSaved->setText(savedText(saved.whole()));
    showPort();
    if (saved.senders) {
        showSenders();
    }
    if (saved.settings) {
        OptionsLogic::SystemPage stored = systemPage();
        stored.senders = saved.senders ? stored.senders : m_storedSystem.senders;
        m_storedSystem = stored;
        Q_EMIT languageSaved();
    }
    return saved.whole();
}

bool frmOptions::mayClose()
{
    const bool popUp = popUpPage() != m_storedPopUp;
    const bool system = systemPage() != m_storedSystem;
    const auto save = [&] { return (!popUp || savePopUpPage()) && (!system || saveSystemPage()); };
    return (!popUp && !system) ||
           appearance::settleUnsaved(m_context, *this,
                                     {.name = {}, .question = u"OptionsUnsaved"_s, .save = save});
}

QString frmOptions::savedText(bool saved) const
{
    return saved ? m_context.texts.Lms(u"OptionsSaved"_s) : QString();
}

// Typed letters are ignored: they would jump from code to code, while the list shows the languages' own
// names.
bool frmOptions::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->CmbLanguage && event->type() == QEvent::KeyPress) {
        const QString typed = static_cast<QKeyEvent *>(event)->text();
        return !typed.isEmpty() && typed.front().isPrint() && typed.front() != u' ';
    }
    return Form::eventFilter(watched, event);
}

void frmOptions::closing()
{
    m_effects.iniGridCallerID_tarn();
}

} // namespace options
