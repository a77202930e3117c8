#include "phonebook/frmSimplePhoneBook.h"

#include "appearance/ThemedIcons.h"
#include "phonebook/MarkDelegate.h"
#include "phonebook/PhoneBookEntry.h"
#include "ui_frmSimplePhoneBook.h"

#include <QCloseEvent>
#include <QMenu>
#include <QShortcut>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace phonebook {

namespace {

constexpr std::chrono::milliseconds typingPause{300};

/// How wide the columns are at first, in characters.
constexpr std::array columnWidths{26, 28, 14, 14, 20};

} // namespace

frmSimplePhoneBook::frmSimplePhoneBook(const appearance::FormContext &context)
    : QWidget(nullptr, Qt::Window), m_context(context), m_ui(std::make_unique<Ui::frmSimplePhoneBook>()),
      m_setup(context.services), m_data(new DataPhonebook(context.log, context.texts, this))
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(appearance::programIcon());
    m_setup.load(*this);
    setUpGrid();
    connectControls();
    connectGrid();
    addShortcuts();
    showAll();
    m_ui->txtSearch->setFocus();
}

frmSimplePhoneBook::~frmSimplePhoneBook()
{
    m_setup.unload();
}

void frmSimplePhoneBook::setUpGrid()
{
    m_ui->DbgPhoneBook->setModel(m_data);
    m_ui->DbgPhoneBook->setItemDelegate(new MarkDelegate(*m_data, this));
}

void frmSimplePhoneBook::connectControls()
{
    m_typingPause.setSingleShot(true);
    m_typingPause.setInterval(typingPause);
    connect(&m_typingPause, &QTimer::timeout, this, &frmSimplePhoneBook::search);
    connect(m_ui->txtSearch, &QLineEdit::textEdited, &m_typingPause, [this] { m_typingPause.start(); });
    connect(m_ui->txtSearch, &QLineEdit::returnPressed, this, &frmSimplePhoneBook::search);
    connect(m_ui->Command3, &QPushButton::clicked, this, &frmSimplePhoneBook::search);
    connect(m_ui->cmdPhonebook_Add, &QPushButton::clicked, this, &frmSimplePhoneBook::addAsked);
    connect(m_ui->Command1, &QPushButton::clicked, this, &frmSimplePhoneBook::editAsked);
    connect(m_ui->cmdPhonebook_delete, &QPushButton::clicked, this,
            [this] { deleteCurrent(DeletedBy::Button); });
    connect(m_ui->Command2, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->Command4, &QPushButton::clicked, this, &frmSimplePhoneBook::showHelp);
    m_ui->Command4->setEnabled(m_context.navigator.canShow(core::Window::Help));
}

void frmSimplePhoneBook::connectGrid()
{
    const auto *grid = m_ui->DbgPhoneBook;
    connect(grid, &appearance::RecordGrid::recordActivated, this, &frmSimplePhoneBook::editAsked);
    connect(grid, &appearance::RecordGrid::deleteRequested, this, [this] { deleteCurrent(DeletedBy::Grid); });
    connect(grid, &QWidget::customContextMenuRequested, this, &frmSimplePhoneBook::showMenu);
    connect(m_data, &DataPhonebook::refused, this, &frmSimplePhoneBook::showRefusal);
    connect(m_data, &DataPhonebook::changedInPlace, this, [this] {
        notice({});
        m_context.server.SendServer(u"REFRESHSIMPLEPHONEBOOK"_s);
    });
}

void frmSimplePhoneBook::addShortcuts()
{
    const auto add = [this](const QKeySequence &keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    add(QKeySequence::Find, [this] {
        m_ui->txtSearch->setFocus(Qt::ShortcutFocusReason);
        m_ui->txtSearch->selectAll();
    });
    add(Qt::Key_F5, &frmSimplePhoneBook::refresh);
    add(Qt::Key_F1, &frmSimplePhoneBook::showHelp);
}

/// The operator's own widths and order come first. Does nothing before a file was opened: there are no
/// columns then.
void frmSimplePhoneBook::layOutColumns()
{
    auto *grid = m_ui->DbgPhoneBook;
    const int key = m_data->columnOf(u"SN"_s);
    if (key < 0 || grid->isColumnHidden(key)) {
        return;
    }
    for (int column = 0; column < int(columnWidths.size()); ++column) {
        grid->setColumnWidth(column, columnWidths.at(size_t(column)) * fontMetrics().horizontalAdvance(u'0'));
    }
    grid->remember(m_context.services.windows, u"frmSimplePhoneBook.DbgPhoneBook"_s);
    grid->hideColumn(key);
}

void frmSimplePhoneBook::showAll(std::optional<qint32> sn)
{
    m_typingPause.stop();
    m_ui->txtSearch->clear();
    if (bind(allEntriesQuery())) {
        standOnSn(sn);
        showCount();
    }
    showHint();
}

void frmSimplePhoneBook::showQuery(const QString &query)
{
    m_typingPause.stop();
    if (bind(query)) {
        standOn(0);
        showCount();
    }
    showHint();
}

bool frmSimplePhoneBook::bind(const QString &query)
{
    const bool bound = m_data->setRecordSource(m_context.paths.PhoneBookFile, query);
    notice(bound ? QString() : troubleText(m_context.texts, m_context.paths.PhoneBookFile));
    if (bound) {
        layOutColumns();
    }
    return bound;
}

// While the file can be used, it is the words of the search that the query broke on.
void frmSimplePhoneBook::search()
{
    m_typingPause.stop();
    if (bind(searchQuery(m_ui->txtSearch->text().trimmed()))) {
        standOn(0);
        if (m_data->rowCount() > 0) {
            showCount();
        }
    } else if (obstacleText(m_context.texts, m_context.paths.PhoneBookFile).isEmpty()) {
        notice(m_context.texts.Lms(u"SearchNotPossible"_s));
    }
    showHint();
}

void frmSimplePhoneBook::refresh()
{
    const std::optional<qint32> sn = currentSn();
    const QString shown = m_data->recordSource();
    if (bind(shown.isEmpty() ? allEntriesQuery() : shown)) {
        standOnSn(sn);
        showCount();
    }
    showHint();
}

// The button sends the command of the customer list and not of the phone book: servers know the deletion of
// an entry by it. What the grid itself deletes counts as a change made in the grid.
void frmSimplePhoneBook::deleteCurrent(DeletedBy means)
{
    if (!m_context.prompts.askOkCancel(m_context.texts.Lms(u"DeletePhoneNumberInfo?"_s), u"CRM"_s)) {
        return;
    }
    const int row = m_ui->DbgPhoneBook->currentIndex().row();
    if (row < 0) {
        return;
    }
    if (!m_data->removeRow(row)) {
        notice(troubleText(m_context.texts, m_context.paths.PhoneBookFile));
        return;
    }
    standOn(row - 1);
    showCount();
    showHint();
    m_context.server.SendServer(means == DeletedBy::Button ? u"REFRESHCUSTOMERLIST"_s
                                                           : u"REFRESHSIMPLEPHONEBOOK"_s);
}

/// A row behind the last stands for the last; before the first, the list stands on none.
void frmSimplePhoneBook::standOn(int row)
{
    const int column = m_data->columnOf(u"Telno"_s);
    m_ui->DbgPhoneBook->setCurrentIndex(m_data->index(std::min(row, m_data->rowCount() - 1), column));
}

/// On the first row, where there is no such entry.
void frmSimplePhoneBook::standOnSn(std::optional<qint32> sn)
{
    standOn(std::max(sn ? m_data->rowOf(*sn) : 0, 0));
}

std::optional<qint32> frmSimplePhoneBook::currentSn() const
{
    const QVariant sn = m_data->field(m_ui->DbgPhoneBook->currentIndex().row(), u"SN"_s);
    return sn.isNull() ? std::nullopt : std::optional(sn.toInt());
}

void frmSimplePhoneBook::showCount()
{
    m_ui->lblCount->setText(m_context.texts.Lms(u"Totalcount"_s) + u": "_s +
                            QString::number(m_data->rowCount()));
}

void frmSimplePhoneBook::showHint()
{
    const bool whole = m_data->recordSource() == allEntriesQuery();
    m_ui->DbgPhoneBook->setHint(whole ? m_context.texts.Lms(u"PhoneBookEmpty"_s)
                                      : m_context.texts.Lms(u"NoEntryFound"_s));
}

void frmSimplePhoneBook::showRefusal(bool blankNumber)
{
    notice(blankNumber ? m_context.texts.Lms(u"PhoneNumbersCantbeBlank"_s)
                       : troubleText(m_context.texts, m_context.paths.PhoneBookFile));
}

void frmSimplePhoneBook::showMenu(const QPoint &position)
{
    auto *grid = m_ui->DbgPhoneBook;
    if (!grid->currentIndex().isValid()) {
        return;
    }
    const core::TextLookup &texts = m_context.texts;
    QMenu menu(this);
    menu.addAction(texts.Lms(u"Edit"_s), this, &frmSimplePhoneBook::editAsked);
    menu.addSeparator();
    menu.addAction(texts.Lms(u"Copy"_s), grid, &appearance::RecordGrid::copySelection);
    menu.addAction(texts.Lms(u"CopyCell"_s), grid, &appearance::RecordGrid::copyCell);
    menu.addSeparator();
    menu.addAction(texts.Lms(u"deletecurrent"_s), this, [this] { deleteCurrent(DeletedBy::Button); });
    menu.exec(grid->viewport()->mapToGlobal(position));
}

void frmSimplePhoneBook::showHelp()
{
    if (m_ui->Command4->isEnabled()) {
        m_context.navigator.ShowHelp(u"Popup_SimplePhoneBook"_s);
    }
}

void frmSimplePhoneBook::notice(const QString &text)
{
    m_ui->lblNotice->setText(text);
}

bool frmSimplePhoneBook::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate) {
        showCount();
    }
    return QWidget::event(event);
}

void frmSimplePhoneBook::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void frmSimplePhoneBook::closeEvent(QCloseEvent *event)
{
    m_setup.rememberGeometry(*this);
    QWidget::closeEvent(event);
}

} // namespace phonebook
