#include "appearance/Keys.h"
#include "phonebook/MarkDelegate.h"
#include "phonebook/PhoneBookEntry.h"
#include "phonebook/frmSimplePhoneBook.h"
#include "ui_frmSimplePhoneBook.h"

#include <QMenu>

#include <array>

using namespace Qt::StringLiterals;

// The list's grid, commands and keys, as they are when it opens.
namespace phonebook {

namespace {

/// How wide the columns are at first, in characters.
constexpr std::array columnWidths{26, 28, 14, 14, 20};

} // namespace

void frmSimplePhoneBook::setUpGrid()
{
    m_ui->DbgPhoneBook->setModel(m_data);
    m_ui->DbgPhoneBook->setItemDelegate(new MarkDelegate(*m_data, this));
}

void frmSimplePhoneBook::connectControls()
{
    m_typing.watch(*m_ui->txtSearch, *m_ui->DbgPhoneBook, [this] { search(); });
    connect(m_ui->Command3, &QPushButton::clicked, this, &frmSimplePhoneBook::search);
    connect(m_ui->cmdPhonebook_Add, &QPushButton::clicked, this, &frmSimplePhoneBook::addAsked);
    connect(m_ui->Command1, &QPushButton::clicked, this, &frmSimplePhoneBook::editAsked);
    connect(m_ui->cmdPhonebook_delete, &QPushButton::clicked, this,
            [this] { deleteCurrent(DeletedBy::Button); });
    connect(m_ui->Command2, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->Command4, &QPushButton::clicked, this,
            [this] { m_context.navigator.ShowHelp(u"Popup_SimplePhoneBook"_s); });
    appearance::onKeys(*this, QKeySequence::Refresh, [this] { refresh(); });
    appearance::onHelpKey(*this, m_context.navigator, u"Popup_SimplePhoneBook"_s);
}

void frmSimplePhoneBook::connectGrid()
{
    const auto *grid = m_ui->DbgPhoneBook;
    connect(grid, &appearance::RecordGrid::recordActivated, this, &frmSimplePhoneBook::editAsked);
    connect(grid, &appearance::RecordGrid::currentRowChanged, m_ui->Command1, &QWidget::setEnabled);
    connect(grid, &appearance::RecordGrid::deleteRequested, this, [this] { deleteCurrent(DeletedBy::Grid); });
    connect(grid, &QWidget::customContextMenuRequested, this, &frmSimplePhoneBook::showMenu);
    connect(m_data, &DataPhonebook::blankRefused, this,
            [this] { notice(m_context.texts.Lms(u"PhoneNumbersCantbeBlank"_s)); });
    connect(m_data, &DataPhonebook::writingFailed, this,
            [this](const QModelIndex &cell, const QString &typed) {
                QTimer::singleShot(
                    0, this, [this, cell = QPersistentModelIndex(cell), typed] { editAgain(cell, typed); });
            });
    connect(m_data, &DataPhonebook::changedElsewhere, this,
            [this](const QModelIndex &cell, const PhoneBookEntry &loaded, const QString &typed) {
                QTimer::singleShot(0, this, [this, cell = QPersistentModelIndex(cell), loaded, typed] {
                    settle(cell, loaded, typed);
                });
            });
    connect(m_data, &store::ResultModel::rowsFound, this, &frmSimplePhoneBook::standOnWanted);
    connect(m_data, &DataPhonebook::readingEnded, this, &frmSimplePhoneBook::showAllFound);
    connect(m_data, &DataPhonebook::readingHeldUp, this, &frmSimplePhoneBook::showReadingTrouble);
    connect(m_data, &DataPhonebook::lockEnded, this, [this] { bind(m_asked, m_wanted); });
    connect(m_data, &DataPhonebook::changedInPlace, this, [this] {
        notice({});
        m_context.server.SendServer(u"REFRESHSIMPLEPHONEBOOK"_s);
    });
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

} // namespace phonebook
