#include "appearance/RecordGrid.h"

#include "appearance/GridDelegate.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace appearance {

namespace {

constexpr int rowPadding = 12;

/// A cell in one line of tab-separated text: what would begin another cell or line becomes a blank.
QString cellText(const QModelIndex &index)
{
    QString text = index.data().toString();
    for (const QChar breaking : u"\t\r\n"_s) {
        text.replace(breaking, u' ');
    }
    return text;
}

} // namespace

RecordGrid::RecordGrid(QWidget *parent) : QTableView(parent)
{
    fitRows();
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter); // as the cells stand
    setItemDelegate(new GridDelegate(this));
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
    QMenu menu(this);
    for (int column = 0; column < model()->columnCount(); ++column) {
        QAction *action = menu.addAction(model()->headerData(column, Qt::Horizontal).toString());
        action->setCheckable(true);
        action->setChecked(!isColumnHidden(column));
        connect(action, &QAction::toggled, this, [this, column](bool shown) {
            const bool last = horizontalHeader()->count() - horizontalHeader()->hiddenSectionCount() == 1;
            setColumnHidden(column, !shown && !last);
            widenToHeading(column);
        });
    }
    menu.exec(horizontalHeader()->mapToGlobal(position));
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
    } else if (onRow && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        Q_EMIT recordActivated(currentIndex().row());
    } else if (onRow && event->key() == Qt::Key_Delete) {
        Q_EMIT deleteRequested();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void RecordGrid::copySelection()
{
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex &row : std::as_const(rows)) {
        QStringList cells;
        for (int place = 0; place < model()->columnCount(); ++place) {
            const int column = horizontalHeader()->logicalIndex(place);
            if (!isColumnHidden(column)) {
                cells.append(cellText(row.siblingAtColumn(column)));
            }
        }
        lines.append(cells.join(u'\t'));
    }
    QApplication::clipboard()->setText(lines.join(u'\n'));
}

void RecordGrid::copyCell()
{
    QApplication::clipboard()->setText(currentIndex().data().toString());
}

} // namespace appearance
