#pragma once

#include "core/WindowMemory.h"

#include <QTableView>
#include <QTimer>

#include <functional>
#include <span>
#include <vector>

namespace appearance {

/// The table of every list: a hint where it is empty, copying of cells and rows, a double-click or Enter that
/// opens a row, Del that asks to delete it, and, where `remember` is called, the operator's widths, order and
/// choice of columns kept from one time to the next.
class RecordGrid : public QTableView
{
    Q_OBJECT

public:
    explicit RecordGrid(QWidget *parent = nullptr);
    ~RecordGrid() override;

    /// What stands in the middle of an empty grid.
    void setHint(const QString &text);
    /// Lets the operator move, hide and show columns by the header's context menu.
    void setColumnsChoosable();
    /// How wide the first columns are, in characters, before the operator chooses.
    void setWidths(std::span<const int> characters);
    /// A command on the current row; the one without a caption is a line between others.
    struct RowCommand
    {
        QString caption;
        std::function<void()> work;
    };
    /// What the grid's context menu offers while there is a current row, beside the grid's own actions.
    void setRowMenu(const QList<RowCommand> &commands);
    /// Takes widths, order and choice of columns from the memory, and keeps them there under `name` from then
    /// on. Before the operator has chosen any, a column is as wide as its heading at least. Call once the
    /// model and the first widths stand; the memory must outlive the grid.
    void remember(core::WindowMemory &memory, const QString &name);
    void setModel(QAbstractItemModel *model) override;
    /// In their order.
    std::vector<int> selectedRows() const;
    /// Does what brings other rows; while a cell is open, as soon as that is closed.
    void whenNotTyping(std::function<void()> work);

Q_SIGNALS:
    void recordActivated(int row);
    void deleteRequested();
    /// Whether there is a current row, each time that may have changed.
    void currentRowChanged(bool exists);

public Q_SLOTS:
    /// The selected rows as tab-separated text, one line each, visible columns in their order on the screen.
    /// Many rows are read from the event loop, and reach the clipboard once all are; rows that go
    /// meanwhile end it. The clipboard is then as it was, as it is where nothing is selected.
    void copySelection();
    /// The text of the current cell alone.
    void copyCell();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;
    void dataChanged(const QModelIndex &first, const QModelIndex &last,
                     const QList<int> &roles = QList<int>()) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void fitRows();
    void chooseColumns(const QPoint &position);
    void widenToHeading(int column);
    void keepColumns();
    void copyOn();
    void endCopying();
    QString rowText(int row) const;

    QString m_hint;
    core::WindowMemory *m_memory = nullptr;
    QString m_name;
    std::vector<int> m_toCopy; ///< the last row in front
    QStringList m_copied;
    QTimer m_copying;
    std::function<void()> m_afterTyping;
};

} // namespace appearance
