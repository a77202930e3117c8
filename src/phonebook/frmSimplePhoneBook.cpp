#include "phonebook/frmSimplePhoneBook.h"

#include "appearance/SaveRecord.h"
#include "appearance/ThemedIcons.h"
#include "phonebook/PhoneBookEntry.h"
#include "ui_frmSimplePhoneBook.h"

#include <QCloseEvent>
#include <QComboBox>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace phonebook {

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
    showAll();
    m_ui->txtSearch->setFocus();
}

frmSimplePhoneBook::~frmSimplePhoneBook()
{
    m_setup.unload();
}

void frmSimplePhoneBook::showAll(std::optional<qint32> sn)
{
    m_ui->txtSearch->clear();
    m_typing.settle();
    bind(allEntriesQuery(), sn);
}

void frmSimplePhoneBook::showQuery(const QString &query)
{
    m_ui->txtSearch->clear(); // its words would not be what is shown
    m_typing.settle();
    bind(query);
}

// What is being typed into a cell is written first: new rows take its box away.
void frmSimplePhoneBook::bind(const QString &query, std::optional<qint32> sn)
{
    auto *grid = m_ui->DbgPhoneBook;
    if (grid->indexWidget(grid->currentIndex()) != nullptr) {
        grid->setFocus();
    }
    m_asked = query;
    m_wanted = sn;
    if (m_data->setRecordSource(m_context.paths.PhoneBookFile, query)) {
        m_typing.rowsShown();
        layOutColumns();
        notice({});
        standOn(0);
        standOnWanted();
        if (!m_data->isReading()) {
            showAllFound();
        }
    } else {
        showReadingTrouble();
    }
    showHint();
}

void frmSimplePhoneBook::search()
{
    m_typing.settle();
    bind(searchQuery(m_ui->txtSearch->text().trimmed()));
}

void frmSimplePhoneBook::refresh()
{
    const QString shown = m_data->recordSource();
    bind(shown.isEmpty() ? allEntriesQuery() : shown, currentSn());
}

/// A search without hits leaves the count of the one before.
void frmSimplePhoneBook::showAllFound()
{
    const bool searched = m_data->recordSource() == searchQuery(m_ui->txtSearch->text().trimmed());
    if (m_data->rowCount() > 0 || !searched) {
        showCount();
    }
    if (!m_data->isComplete()) {
        showReadingTrouble();
    }
}

void frmSimplePhoneBook::showReadingTrouble()
{
    const QString key = store::troubleKey(m_data->trouble(), {});
    notice(key.isEmpty() ? troubleText(m_context.texts, m_context.paths.PhoneBookFile)
                         : m_context.texts.Lms(key));
}

// The button sends the command of the customer list and not of the phone book: servers know the deletion of
// an entry by it. What the grid itself deletes counts as a change made in the grid.
void frmSimplePhoneBook::deleteCurrent(DeletedBy means)
{
    const int row = m_ui->DbgPhoneBook->currentIndex().row();
    const bool confirmed = m_typing.ask([this] {
        return m_context.prompts.askOkCancel(m_context.texts.Lms(u"DeletePhoneNumberInfo?"_s), u"CRM"_s);
    });
    if (!confirmed || row < 0) {
        return;
    }
    if (!m_data->removeRow(row)) {
        return showWritingTrouble();
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

/// Entries that are found later do not take the operator from the one that he has gone to.
void frmSimplePhoneBook::standOnWanted()
{
    const int current = m_ui->DbgPhoneBook->currentIndex().row();
    const int wanted = m_wanted ? m_data->rowOf(*m_wanted) : -1;
    if ((current <= 0 || current == m_standsOn) && (wanted >= 0 ? wanted != current : current < 0)) {
        standOn(std::max(wanted, 0));
    }
    m_standsOn = wanted;
    if (wanted >= 0 && !m_data->isReading()) { // until then those in front of it may turn out to be others
        m_wanted.reset();
    }
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

/// None while no file could be read: it is not known then whether there are entries.
void frmSimplePhoneBook::showHint()
{
    const QString &shown = m_data->recordSource();
    const QString key = shown == allEntriesQuery() ? u"PhoneBookEmpty"_s : u"NoEntryFound"_s;
    m_ui->DbgPhoneBook->setHint(shown.isEmpty() ? QString() : m_context.texts.Lms(key));
}

/// A file that has taken the place of the one in the list is shown first.
void frmSimplePhoneBook::showWritingTrouble()
{
    const QString &file = m_context.paths.PhoneBookFile;
    const bool replaced = m_data->isReplaced() && obstacleText(m_context.texts, file).isEmpty();
    if (replaced) {
        refresh();
    }
    const bool otherIsShown = replaced && !m_data->isReplaced();
    notice(otherIsShown ? m_context.texts.Lms(u"PhoneBookReplaced"_s) : troubleText(m_context.texts, file));
}

/// What somebody else has changed meanwhile is put before the operator.
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
        bind(m_data->recordSource(), saved.entry.SN);
    }
}

// The grid closes the editor of a cell whatever becomes of its text, so it is opened on the text once more.
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

bool frmSimplePhoneBook::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && !m_data->isReading()) {
        showCount();
    }
    return QWidget::event(event);
}

void frmSimplePhoneBook::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
    } else if (!m_typing.leave()) {
        close();
    }
}

void frmSimplePhoneBook::closeEvent(QCloseEvent *event)
{
    m_setup.rememberGeometry(*this);
    QWidget::closeEvent(event);
}

} // namespace phonebook
