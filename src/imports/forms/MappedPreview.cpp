#include "imports/forms/MappedPreview.h"

#include "core/TextUtilities.h"

#include <QHeaderView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr int widthInCharacters = 24;

} // namespace

MappedPreview::MappedPreview(QWidget *parent) : QTableWidget(parent)
{
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setWordWrap(false);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
}

void MappedPreview::setChoices(const QString &nothing, const QStringList &fields)
{
    m_choices = QStringList(nothing) + fields;
}

void MappedPreview::showRows(const QStringList &headings, const QList<QStringList> &rows,
                             const QList<int> &fieldOfColumn)
{
    clear();
    setRowCount(int(rows.size()) + 1);
    setColumnCount(int(fieldOfColumn.size()));
    QWidget *before = this;
    for (int column = 0; column < columnCount(); ++column) {
        const QString heading = core::shownText(headings.value(column));
        setHorizontalHeaderItem(
            column, new QTableWidgetItem(heading.isEmpty() ? QString::number(column + 1) : heading));
        addBox(column, fieldOfColumn.at(column));
        box(column)->setAccessibleName(heading);
        setTabOrder(before, box(column));
        before = box(column);
        for (int row = 0; row < rows.size(); ++row) {
            setItem(row + 1, column, new QTableWidgetItem(core::shownText(rows.at(row).value(column))));
        }
        setColumnWidth(column, std::max(fontMetrics().averageCharWidth() * widthInCharacters,
                                        horizontalHeader()->sectionSizeHint(column)));
    }
}

void MappedPreview::addBox(int column, int field)
{
    auto *choice = new QComboBox;
    choice->addItems(m_choices);
    choice->setCurrentIndex(field + 1);
    setCellWidget(0, column, choice);
    setRowHeight(0, choice->sizeHint().height());
    connect(choice, &QComboBox::currentIndexChanged, this, &MappedPreview::fieldsChanged);
}

QComboBox *MappedPreview::box(int column) const
{
    return qobject_cast<QComboBox *>(cellWidget(0, column));
}

QList<int> MappedPreview::fieldOfColumn() const
{
    QList<int> fields;
    for (int column = 0; column < columnCount(); ++column) {
        fields.append(box(column)->currentIndex() - 1);
    }
    return fields;
}

} // namespace imports
