#include "phonebook/forms/frmSimplePhoneBook.h"

#include "appearance/SaveRecord.h"
#include "phonebook/PhoneBookEntry.h"
#include "ui_frmSimplePhoneBook.h"

#include <QComboBox>

using namespace Qt::StringLiterals;

namespace phonebook {

frmSimplePhoneBook::frmSimplePhoneBook(const appearance::FormContext &context)
    : Form(context.services), m_context(context), m_ui(std::make_unique<Ui::frmSimplePhoneBook>()),
      m_data(new DataPhonebook(context.log, context.texts, this))
{
    m_ui->setupUi(this);
    load();
    setUpList();
    connectControls();
    connectGrid();
    m_list->refresh();
    m_ui->txtSearch->setFocus();
}

frmSimplePhoneBook::~frmSimplePhoneBook() = default;

void frmSimplePhoneBook::followSaved(qint32 sn)
{
    m_list->follow({.query = allEntriesQuery()}, sn);
}

void frmSimplePhoneBook::followImported()
{
    m_list->follow({.query = allEntriesQuery()}, m_list->currentSn());
}

void frmSimplePhoneBook::showQuery(const QString &query)
{
    m_list->showUnsearched({.query = query});
}

// No hint while the file cannot be read: nobody knows then whether there are entries.
void frmSimplePhoneBook::showAnswer(bool whole)
{
    const QString &shown = m_data->recordSource();
    const QString key = shown == allEntriesQuery() ? u"PhoneBookEmpty"_s : u"NoEntryFound"_s;
    m_ui->DbgPhoneBook->setHint(shown.isEmpty() ? QString() : m_context.texts.Lms(key));
    if (whole) {
        layOutColumns();
        notice({});
    } else {
        showReadingTrouble();
    }
}

void frmSimplePhoneBook::showReadingTrouble()
{
    const QString key = store::troubleKey(m_data->trouble(), {});
    notice(key.isEmpty() ? troubleText(m_context.texts, m_context.paths.PhoneBookFile)
                         : m_context.texts.Lms(key));
}

void frmSimplePhoneBook::deleteSelected(DeletedBy means)
{
    m_deletedBy = means;
    m_list->removeSelected(m_context.texts.Lms(u"DeletePhoneNumberInfo?"_s), [this](const QString &question) {
        return m_context.prompts.askOkCancel(question, u"CRM"_s);
    });
}

// The button sends the customer list's command, not the phone book's: by that one servers have always learnt
// of a deleted entry. What the grid itself deletes counts as a change made in the grid.
void frmSimplePhoneBook::tellOfDeleted(int rows, bool whole)
{
    whole ? notice({}) : showWritingTrouble();
    if (rows > 0) {
        m_context.server.SendServer(m_deletedBy == DeletedBy::Button ? u"REFRESHCUSTOMERLIST"_s
                                                                     : u"REFRESHSIMPLEPHONEBOOK"_s);
    }
}

void frmSimplePhoneBook::tellOfRestored(qint32 sn)
{
    m_context.log.trap("cmdPhonebook_delete_Click"_L1, [&] {
        if (const std::optional<PhoneBookEntry> entry = entryBySn(m_context.paths.PhoneBookFile, sn)) {
            Q_EMIT entrySaved(*entry);
        }
    });
}

// If another file has taken the place of the one in the list, shows that one first.
void frmSimplePhoneBook::showWritingTrouble()
{
    const QString &file = m_context.paths.PhoneBookFile;
    const bool replaced = m_data->isReplaced() && obstacleText(m_context.texts, file).isEmpty();
    if (replaced) {
        m_list->refresh();
    }
    const bool otherIsShown = replaced && !m_data->isReplaced();
    notice(otherIsShown ? m_context.texts.Lms(u"PhoneBookReplaced"_s) : troubleText(m_context.texts, file));
}

// Asks the operator about what somebody else has changed meanwhile.
void frmSimplePhoneBook::settle(const QPersistentModelIndex &cell, PhoneBookEntry loaded,
                                const QString &typed)
{
    if (!cell.isValid() || !isVisible()) {
        return;
    }
    PhoneBookEntry entry = withField(loaded, m_data->fieldAt(cell.column()), typed);
    const auto captionOf = [this](const QString &column) {
        return m_data->headerData(m_data->columnOf(column), Qt::Horizontal).toString();
    };
    const auto isMark = [this](const QString &column) { return m_data->isMark(m_data->columnOf(column)); };
    const SavedEntry saved = appearance::saveRecord(
        m_context, {*this, loaded.simpledes, captionOf, isMark},
        [&] { return m_data->write(cell.row(), loaded, entry); },
        [&](const core::Saved &refused, core::Whose holds) { decide(refused, holds, loaded, entry); });
    if (!saved.written && !saved.dropped) {
        return editAgain(cell, typed);
    }
    if (saved.dropped || saved.entry.SN != currentSn()) { // a row has gone, or come
        m_list->show(m_list->shown(), saved.entry.SN);
    }
}

// The grid closes a cell's editor even if the text was refused, so this opens it again with that text.
void frmSimplePhoneBook::editAgain(const QPersistentModelIndex &cell, const QString &typed)
{
    auto *grid = m_ui->DbgPhoneBook;
    if (!cell.isValid() || !isVisible()) {
        return;
    }
    const int column = cell.column();
    grid->setCurrentIndex(cell);
    const std::optional<qint32> sn = currentSn();
    showWritingTrouble();
    const QModelIndex place = grid->currentIndex().siblingAtColumn(column);
    if (!place.isValid() || currentSn() != sn) {
        return;
    }
    grid->setCurrentIndex(place);
    grid->edit(place);
    if (auto *line = qobject_cast<QLineEdit *>(grid->indexWidget(place))) {
        line->setText(typed);
    } else if (auto *words = qobject_cast<QComboBox *>(grid->indexWidget(place))) {
        words->setCurrentIndex(words->findData(typed));
    }
}

void frmSimplePhoneBook::notice(const QString &text)
{
    m_ui->lblNotice->setText(text);
}

} // namespace phonebook
