#include "appearance/SearchedList.h"

#include "appearance/Keys.h"
#include "core/TextUtilities.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace appearance {

SearchedList::SearchedList(const Context &context, const Controls &controls)
    : m_context(context), m_controls(controls), m_rows(context.rows)
{
    connectControls();
    connectWords();
    connectRows();
    if (controls.removal) {
        connectRemoval(*controls.removal);
    }
    QSizePolicy place = controls.count.sizePolicy();
    place.setRetainSizeWhenHidden(true);
    controls.count.setSizePolicy(place);
    controls.grid.window()->installEventFilter(this);
}

void SearchedList::connectControls()
{
    RecordGrid &grid = m_controls.grid;
    connect(&m_controls.search, &QPushButton::clicked, this, &SearchedList::search);
    connect(&m_controls.edit, &QPushButton::clicked, this,
            [this, &grid] { Q_EMIT editAsked(grid.currentIndex().row()); });
    connect(&grid, &RecordGrid::currentRowChanged, this, &SearchedList::offerCommands);
    grid.setRowMenu({{m_controls.edit.text(), [this] { m_controls.edit.click(); }},
                     {m_context.texts.Lms(u"CopyRow"_s), [&grid] { grid.copySelection(); }},
                     {m_context.texts.Lms(u"CopyCell"_s), [&grid] { grid.copyCell(); }}});
    onKeys(*grid.window(), QKeySequence::Refresh, [this] { refresh(); });
    offerCommands(false);
}

void SearchedList::connectRows()
{
    using store::ResultModel;
    connect(&m_rows, &ResultModel::rowsFound, this, &SearchedList::standOnWanted);
    connect(&m_rows, &ResultModel::readingEnded, this, &SearchedList::showAllFound);
    connect(&m_rows, &ResultModel::readingHeldUp, this, [this] { answer(false); });
    connect(&m_rows, &ResultModel::lockEnded, this,
            [this] { m_controls.grid.whenNotTyping([this] { show(m_asked, m_wanted); }); });
}

void SearchedList::connectWords()
{
    constexpr std::chrono::milliseconds typingPause{300};
    QLineEdit &words = m_controls.words;
    m_pause.setSingleShot(true);
    m_pause.setInterval(typingPause);
    connect(&m_pause, &QTimer::timeout, this, &SearchedList::searchIfNew);
    connect(&words, &QLineEdit::textEdited, &m_pause, qOverload<>(&QTimer::start));
    connect(&words, &QLineEdit::returnPressed, this, [this, &words] {
        const bool isShown = m_showsTyped && words.text().trimmed() == m_settledWords;
        isShown ? turnToList() : searchTyped();
    });
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_PageDown}) {
        auto *down = new QShortcut(key, &words, nullptr, nullptr, Qt::WidgetShortcut);
        connect(down, &QShortcut::activated, this, [this] {
            searchIfNew();
            turnToList();
        });
    }
    onKeys(*words.window(), QKeySequence::Find, [&words] {
        words.setFocus(Qt::ShortcutFocusReason);
        words.selectAll();
    });
}

void SearchedList::searchTyped(std::optional<qint32> sn)
{
    m_showsTyped = false;
    const QScopedValueRollback searches(m_searchesTyped, true);
    searchWords(sn);
}

void SearchedList::searchIfNew()
{
    if (m_controls.words.text().trimmed() != m_settledWords) {
        searchTyped();
    }
}

void SearchedList::turnToList()
{
    RecordGrid &grid = m_controls.grid;
    if (m_rows.rowCount() == 0) {
        return;
    }
    if (!grid.currentIndex().isValid()) {
        grid.setCurrentIndex(m_rows.index(0, 0));
    }
    grid.setFocus(Qt::ShortcutFocusReason);
}

// False where there is no search to leave. The row that was found stays, among all others.
bool SearchedList::leaveSearch()
{
    if (m_controls.words.text().isEmpty()) {
        return false;
    }
    m_controls.words.clear();
    searchTyped(m_controls.grid.hasFocus() ? currentSn() : std::nullopt);
    return true;
}

// The words in the box are not searched for unless the operator types again.
void SearchedList::settleWords()
{
    m_pause.stop();
    m_settledWords = m_controls.words.text().trimmed();
}

// While the question stands, no pause runs out and puts other rows in the place of those it is about.
bool SearchedList::ask(const std::function<bool()> &question)
{
    const bool typed = m_pause.isActive();
    m_pause.stop();
    const bool answer = question();
    if (typed) {
        m_pause.start();
    }
    return answer;
}

// What is being typed into a cell is written first: new rows take its box away.
bool SearchedList::show(const Asked &asked, std::optional<qint32> sn)
{
    RecordGrid &grid = m_controls.grid;
    if (grid.indexWidget(grid.currentIndex()) != nullptr) {
        grid.setFocus();
    }
    m_asked = asked;
    m_wanted = sn;
    if (!m_rows.setRecordSource(m_context.file, asked.query)) {
        answer(false);
        return false;
    }
    if (asked.query != m_shown.query) {
        m_controls.count.hide(); // it still speaks of other rows
    }
    m_shown = asked;
    if (!asked.searched) {
        m_showsTyped = m_searchesTyped;
    }
    answer(true);
    standOn(0);
    standOnWanted();
    if (!m_rows.isReading()) {
        showAllFound();
    }
    return true;
}

bool SearchedList::showUnsearched(const Asked &asked)
{
    m_controls.words.clear();
    settleWords();
    return show(asked);
}

bool SearchedList::search()
{
    return searchWords({});
}

bool SearchedList::searchWords(std::optional<qint32> sn)
{
    settleWords();
    const QString query = m_context.searchQuery(m_controls.words.text().trimmed());
    const bool found = show(inChosenOrder({.query = query, .unsorted = query, .searched = true}), sn);
    if (found) {
        m_showsTyped = m_searchesTyped;
    }
    return found;
}

bool SearchedList::sort(int column)
{
    Asked rows = m_shown.query.isEmpty() ? m_context.first : m_shown;
    if (m_context.sortQuery(column, rows.unsorted).isEmpty()) {
        return false;
    }
    m_sortedColumn = column;
    show(inChosenOrder(std::move(rows)));
    return true;
}

SearchedList::Asked SearchedList::inChosenOrder(Asked asked) const
{
    if (m_sortedColumn >= 0) {
        asked.query = m_context.sortQuery(m_sortedColumn, asked.unsorted);
        asked.sortedColumn = m_sortedColumn;
    }
    return asked;
}

void SearchedList::refresh()
{
    show(m_shown.query.isEmpty() ? m_context.first : m_shown, currentSn());
}

void SearchedList::follow(const Asked &all, std::optional<qint32> sn)
{
    show(m_shown.searched ? m_shown : inChosenOrder(all), sn);
}

// A search without hits leaves the count of the one before, and does not show it.
void SearchedList::showAllFound()
{
    if (m_rows.rowCount() > 0 || !m_shown.searched) {
        showCount(m_shown.searched ? m_context.foundCountSign : m_context.countSign);
    }
    if (m_rows.isComplete() != m_isWhole) {
        answer(m_rows.isComplete());
    }
}

void SearchedList::answer(bool whole)
{
    m_isWhole = whole;
    Q_EMIT answered(whole);
}

void SearchedList::showCount(const QString &sign)
{
    m_controls.count.setText(m_context.texts.Lms(u"Totalcount"_s) + sign +
                             QString::number(m_rows.rowCount()));
    m_controls.count.show();
}

std::optional<qint32> SearchedList::currentSn() const
{
    const QVariant sn = m_rows.field(m_controls.grid.currentIndex().row(), u"SN"_s);
    return sn.isNull() ? std::nullopt : std::optional(sn.toInt());
}

// The first column in sight keeps the list from moving sideways.
void SearchedList::standOn(int row)
{
    RecordGrid &grid = m_controls.grid;
    const int start = grid.isRightToLeft() ? grid.viewport()->width() - 1 : 0;
    const int column = std::max(grid.horizontalHeader()->logicalIndexAt(start), 0);
    grid.setCurrentIndex(m_rows.index(std::min(row, m_rows.rowCount() - 1), column));
}

// Rows that are found later do not take the operator from the one that he has gone to.
void SearchedList::standOnWanted()
{
    const int current = m_controls.grid.currentIndex().row();
    const int wanted = m_wanted ? m_rows.rowOf(*m_wanted) : -1;
    if ((current <= 0 || current == m_standsOn) && (wanted >= 0 ? wanted != current : current < 0)) {
        standOn(std::max(wanted, 0));
    }
    m_standsOn = wanted;
    if (wanted >= 0 && !m_rows.isReading()) { // until then those in front of it may turn out to be others
        m_wanted.reset();
    }
}

void SearchedList::connectRemoval(const Removal &removal)
{
    QPushButton &button = removal.button;
    connect(&button, &QPushButton::clicked, this, &SearchedList::removeAsked);
    connect(&m_controls.grid, &RecordGrid::deleteRequested, this, &SearchedList::removeKeyPressed);
    m_controls.grid.setRowMenu({{}, {button.text(), [&button] { button.click(); }}});
    m_removal.emplace(RowRemoval::Context{m_rows, m_context.texts, m_context.nameFields}, removal.deleted);
    connect(&*m_removal, &RowRemoval::removed, this, [this](qint32 sn, int row) {
        standOn(row - 1);
        Q_EMIT removed(sn);
    });
    connect(&*m_removal, &RowRemoval::removalEnded, this, [this](int rows, bool whole) {
        if (!m_rows.isReading()) {
            showCount(m_context.countSign);
        }
        Q_EMIT removalEnded(rows, whole);
    });
    connect(&*m_removal, &RowRemoval::restored, this, [this](qint32 sn) {
        m_restored = sn;
        Q_EMIT restored(sn);
    });
    connect(&*m_removal, &RowRemoval::restoringEnded, this, [this](int rows, bool whole) {
        if (rows > 0) {
            show(m_shown, m_restored);
            m_controls.grid.setFocus();
        }
        Q_EMIT restoringEnded(rows, whole);
    });
    onKeys(*m_controls.grid.window(), QKeySequence::Undo, [this] { m_removal->putBack(); });
}

std::vector<qint64> SearchedList::selectedNumbers() const
{
    std::vector<qint64> numbers;
    for (const int row : m_controls.grid.selectedRows()) {
        if (const std::optional<qint64> number = m_rows.numberOf(row)) {
            numbers.push_back(*number);
        }
    }
    if (const std::optional<qint32> current = currentSn(); numbers.empty() && current) {
        numbers.push_back(*current);
    }
    return numbers;
}

// Several rows are called by their number.
QString SearchedList::nameOf(const std::vector<qint64> &numbers) const
{
    if (numbers.size() > 1) {
        return m_context.texts.Lms(u"RowsSelected"_s).replace(u"%1"_s, QString::number(numbers.size()));
    }
    const int row = numbers.empty() ? -1 : m_rows.rowOf(numbers.front());
    QString name;
    for (const QString &field : m_context.nameFields) {
        name = name.isEmpty() ? core::shownText(m_rows.field(row, field).toString()).trimmed() : name;
    }
    return name;
}

// The list may be read anew while the question stands: other rows are then in the places of these.
void SearchedList::removeSelected(const QString &question,
                                  const std::function<bool(const QString &question)> &ask)
{
    const std::vector<qint64> numbers = selectedNumbers();
    const QString about = nameOf(numbers);
    const QString whole = about.isEmpty() ? question : question + u"\n\n"_s + about;
    if (this->ask([&] { return ask(whole); }) && !numbers.empty()) {
        m_removal->remove(numbers);
    }
}

// A button that loses its row would hand the keyboard on to the one that closes the window.
void SearchedList::offerCommands(bool onRow)
{
    QList<QPushButton *> commands = {&m_controls.edit};
    if (m_controls.removal) {
        commands.append(&m_controls.removal->button);
    }
    for (QPushButton *button : commands) {
        if (!onRow && button->hasFocus()) {
            m_controls.words.setFocus();
        }
        button->setEnabled(onRow);
    }
}

bool SearchedList::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && !m_rows.isReading()) {
        showCount(m_context.countSign);
    } else if (event->type() == QEvent::KeyPress &&
               static_cast<const QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        return leaveSearch();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace appearance
