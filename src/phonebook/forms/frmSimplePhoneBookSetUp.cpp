#include "phonebook/PhoneBookEntry.h"
#include "phonebook/forms/MarkDelegate.h"
#include "phonebook/forms/frmSimplePhoneBook.h"
#include "ui_frmSimplePhoneBook.h"

#include <array>

using namespace Qt::StringLiterals;

// The list's grid, commands and keys, as they are when it opens.
namespace phonebook {

namespace {

// How wide the columns are at first, in characters.
constexpr std::array columnWidths{26, 28, 14, 14, 20};

} // namespace

void frmSimplePhoneBook::setUpList()
{
    using appearance::SearchedList;
    m_ui->DbgPhoneBook->setModel(m_data);
    m_ui->DbgPhoneBook->setItemDelegate(new MarkDelegate(*m_data, this));
    m_list.emplace(SearchedList::Context{.rows = *m_data,
                                         .file = m_context.paths.PhoneBookFile,
                                         .texts = m_context.texts,
                                         .first = {.query = allEntriesQuery()},
                                         .searchQuery = searchQuery,
                                         .nameFields = {u"simpledes"_s, u"Telno"_s},
                                         .countSign = u": "_s,
                                         .foundCountSign = u": "_s},
                   SearchedList::Controls{
                       .grid = *m_ui->DbgPhoneBook,
                       .words = *m_ui->txtSearch,
                       .search = *m_ui->Command3,
                       .edit = *m_ui->Command1,
                       .count = *m_ui->lblCount,
                       .removal = {{.button = *m_ui->cmdPhonebook_delete,
                                    .deleted = {*m_ui->framDeleted, *m_ui->lblDeleted, *m_ui->cmdUndo}}}});
    connect(&*m_list, &SearchedList::answered, this, &frmSimplePhoneBook::showAnswer);
    connect(&*m_list, &SearchedList::editAsked, this, &frmSimplePhoneBook::editAsked);
    connect(&*m_list, &SearchedList::removeAsked, this, [this] { deleteSelected(DeletedBy::Button); });
    connect(&*m_list, &SearchedList::removeKeyPressed, this, [this] { deleteSelected(DeletedBy::Grid); });
    connect(&*m_list, &SearchedList::removalEnded, this, &frmSimplePhoneBook::tellOfDeleted);
    connect(&*m_list, &SearchedList::restored, this, &frmSimplePhoneBook::tellOfRestored);
    connect(&*m_list, &SearchedList::restoringEnded, this, [this](int rows, bool whole) {
        notice(whole ? QString() : m_context.texts.Lms(u"RowsNotRestored"_s));
        if (rows > 0) {
            m_context.server.SendServer(u"REFRESHSIMPLEPHONEBOOK"_s);
        }
    });
}

void frmSimplePhoneBook::connectControls()
{
    connect(m_ui->cmdPhonebook_Add, &QPushButton::clicked, this, &frmSimplePhoneBook::addAsked);
    connect(m_ui->cmdImport, &QPushButton::clicked, this,
            [this] { m_context.navigator.show(core::Window::ImportPhoneBook); });
    connect(m_ui->Command2, &QPushButton::clicked, this, &QWidget::close);
    offerHelp(m_context.navigator, u"Popup_SimplePhoneBook"_s, {m_ui->Command4});
}

void frmSimplePhoneBook::connectGrid()
{
    const auto *grid = m_ui->DbgPhoneBook;
    connect(grid, &appearance::RecordGrid::recordActivated, this, &frmSimplePhoneBook::editAsked);
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
    connect(m_data, &DataPhonebook::entryWritten, this, [this](const PhoneBookEntry &entry) {
        notice({});
        m_context.server.SendServer(u"REFRESHSIMPLEPHONEBOOK"_s);
        Q_EMIT entrySaved(entry);
    });
}

// The operator's own widths and order win. Before a file was opened there are no columns, and this does
// nothing.
void frmSimplePhoneBook::layOutColumns()
{
    auto *grid = m_ui->DbgPhoneBook;
    const int key = m_data->columnOf(u"SN"_s);
    if (key < 0 || grid->isColumnHidden(key)) {
        return;
    }
    grid->setWidths(columnWidths);
    grid->remember(m_context.services.windows, u"frmSimplePhoneBook.DbgPhoneBook"_s);
    grid->hideColumn(key);
}

} // namespace phonebook
