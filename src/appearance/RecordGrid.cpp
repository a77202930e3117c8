#include "appearance/RecordGrid.h"

#include "appearance/GridDelegate.h"
#include "appearance/Keys.h"
#include "core/TextUtilities.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace appearance {

namespace {

constexpr int rowPadding = 12;
constexpr std::chrono::milliseconds copyingTurn{20};
constexpr std::chrono::milliseconds untilFound{50};

// For popup(), behind which everything goes on: exec() would be an event loop of its own.
QMenu *newMenu(QWidget &widget)
{
    auto *menu = new QMenu(&widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    return menu;
}

} // namespace

RecordGrid::RecordGrid(QWidget *parent) : QTableView(parent)
{
    fitRows();
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter); // as the cells stand
    setItemDelegate(new GridDelegate(this));
    connect(&m_copying, &QTimer::timeout, this, &RecordGrid::copyOn);
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex &index) { Q_EMIT recordActivated(index.row()); });
}

RecordGrid::~RecordGrid() = default;

void RecordGrid::fitRows()
{
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
}

void RecordGrid::setHint(const QString &text)
{
    m_hint = text;
    viewport()->update();
}

void RecordGrid::setColumnsChoosable()
{
    horizontalHeader()->setSectionsMovable(true);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QWidget::customContextMenuRequested, this, &RecordGrid::chooseColumns);
}

void RecordGrid::chooseColumns(const QPoint &position)
{
    QMenu *menu = newMenu(*this);
    for (int column = 0; column < model()->columnCount(); ++column) {
        QAction *action = menu->addAction(model()->headerData(column, Qt::Horizontal).toString());
        action->setCheckable(true);
        action->setChecked(!isColumnHidden(column));
        connect(action, &QAction::toggled, this, [this, column](bool shown) {
            const bool last = horizontalHeader()->count() - horizontalHeader()->hiddenSectionCount() == 1;
            setColumnHidden(column, !shown && !last);
            widenToHeading(column);
        });
    }
    menu->popup(horizontalHeader()->mapToGlobal(position));
}

void RecordGrid::setWidths(std::span<const int> characters)
{
    for (int column = 0; const int count : characters) {
        setColumnWidth(column++, count * fontMetrics().horizontalAdvance(u'0'));
    }
}

void RecordGrid::setRowMenu(const QList<RowCommand> &commands)
{
    for (const RowCommand &command : commands) {
        auto *action = new QAction(command.caption, this);
        action->setSeparator(command.caption.isEmpty());
        action->setEnabled(currentIndex().isValid());
        connect(this, &RecordGrid::currentRowChanged, action, &QAction::setEnabled);
        connect(action, &QAction::triggered, this, command.work);
        addAction(action);
    }
}

void RecordGrid::contextMenuEvent(QContextMenuEvent *event)
{
    if (actions().isEmpty()) {
        return QTableView::contextMenuEvent(event);
    }
    QMenu *menu = newMenu(*this);
    menu->addActions(actions());
    menu->popup(event->globalPos());
}

void RecordGrid::remember(core::WindowMemory &memory, const QString &name)
{
    m_memory = &memory;
    m_name = name;
    for (int column = 0; column < model()->columnCount(); ++column) {
        widenToHeading(column);
    }
    const QByteArray state = memory.geometry(name);
    if (!state.isEmpty()) {
        horizontalHeader()->restoreState(state);
    }
}

// A heading's length differs from language to language.
void RecordGrid::widenToHeading(int column)
{
    const QHeaderView &header = *horizontalHeader();
    if (!isColumnHidden(column)) {
        setColumnWidth(column, std::max(header.sectionSize(column), header.sectionSizeHint(column)));
    }
}

void RecordGrid::keepColumns()
{
    if (m_memory != nullptr && model() != nullptr && model()->columnCount() > 0) {
        m_memory->setGeometry(m_name, horizontalHeader()->saveState());
    }
}

void RecordGrid::hideEvent(QHideEvent *event)
{
    keepColumns();
    QTableView::hideEvent(event);
}

void RecordGrid::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fitRows();
    }
}

void RecordGrid::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (model() == nullptr || model()->rowCount() > 0 || m_hint.isEmpty()) {
        return;
    }
    constexpr int margin = 32;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}

void RecordGrid::keyPressEvent(QKeyEvent *event)
{
    const bool onRow = state() != QAbstractItemView::EditingState && currentIndex().isValid();
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
    } else if (onRow && isEnter(*event)) {
        Q_EMIT recordActivated(currentIndex().row());
    } else if (onRow && event->key() == Qt::Key_Delete) {
        Q_EMIT deleteRequested();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void RecordGrid::setModel(QAbstractItemModel *model)
{
    QTableView::setModel(model);
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &RecordGrid::endCopying);
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &RecordGrid::endCopying);
    connect(model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex &, int first, int last) {
        for (int &row : m_toCopy) {
            row += row >= first ? last - first + 1 : 0;
        }
    });
    const auto tellOfRow = [this] { Q_EMIT currentRowChanged(currentIndex().isValid()); };
    connect(model, &QAbstractItemModel::modelReset, this, tellOfRow);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, tellOfRow);
}

void RecordGrid::whenNotTyping(std::function<void()> work)
{
    if (state() == EditingState) {
        m_afterTyping = std::move(work);
    } else {
        work();
    }
}

// From the event loop: Tab closes one cell to open the next.
void RecordGrid::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    QTableView::closeEditor(editor, hint);
    if (m_afterTyping) {
        QTimer::singleShot(0, this, [this, work = std::exchange(m_afterTyping, {})] { whenNotTyping(work); });
    }
}

// An open cell would show what the file holds, and no longer what is being typed.
void RecordGrid::dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles)
{
    if (state() == EditingState) {
        viewport()->update();
    } else {
        QTableView::dataChanged(first, last, roles);
    }
}

void RecordGrid::copySelection()
{
    endCopying();
    if (selectionModel() == nullptr || !selectionModel()->hasSelection()) {
        return;
    }
    m_toCopy = selectedRows();
    std::ranges::reverse(m_toCopy);
    copyOn();
}

std::vector<int> RecordGrid::selectedRows() const
{
    std::vector<int> rows;
    for (const QItemSelectionRange &range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.push_back(row);
        }
    }
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

// Reading a hundred thousand rows takes seconds, in which calls must go on being shown. A row that the list
// still looks for is waited for.
void RecordGrid::copyOn()
{
    QElapsedTimer timer;
    timer.start();
    const auto isFound = [this](int row) {
        return model()->flags(model()->index(row, 0)) != Qt::NoItemFlags;
    };
    while (!m_toCopy.empty() && isFound(m_toCopy.back()) && timer.elapsed() < copyingTurn.count()) {
        m_copied.append(rowText(m_toCopy.back()));
        m_toCopy.pop_back();
    }
    if (!m_toCopy.empty()) {
        viewport()->setCursor(Qt::BusyCursor);
        return m_copying.start(isFound(m_toCopy.back()) ? std::chrono::milliseconds(0) : untilFound);
    }
    QApplication::clipboard()->setText(m_copied.join(u'\n'));
    endCopying();
}

void RecordGrid::endCopying()
{
    m_copying.stop();
    m_toCopy.clear();
    m_copied.clear();
    viewport()->unsetCursor();
}

QString RecordGrid::rowText(int row) const
{
    QStringList cells;
    for (int place = 0; place < model()->columnCount(); ++place) {
        const int column = horizontalHeader()->logicalIndex(place);
        if (!isColumnHidden(column)) {
            cells.append(core::spreadsheetCell(model()->index(row, column).data().toString()));
        }
    }
    return cells.join(u'\t');
}

void RecordGrid::copyCell()
{
    QApplication::clipboard()->setText(currentIndex().data().toString());
}

} // namespace appearance
