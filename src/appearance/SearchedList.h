#pragma once

#include "appearance/RecordGrid.h"
#include "appearance/RowRemoval.h"
#include "core/TextLookup.h"
#include "store/ResultModel.h"

#include <QLabel>
#include <QLineEdit>
#include <QObject>
#include <QPushButton>
#include <QTimer>

#include <functional>
#include <optional>

namespace appearance {

/// What the windows of a list have in common that is searched: which rows were asked for, which it shows and
/// stands on, how many they are, and what can be done with the one that it stands on.
///
/// It searches at Enter, and a short pause after the last key where other words stand in the box then. Ctrl+F
/// turns to the box; Down, Page Down, and Enter where its words were searched for already, go from it to what
/// was found. Esc leaves a search before it closes the window. An order that was chosen stays for what is
/// searched for later.
class SearchedList : public QObject
{
    Q_OBJECT

public:
    /// A question for rows.
    struct Asked
    {
        QString query;         ///< in the given words
        QString unsorted = {}; ///< the same without its order
        int sortedColumn = -1; ///< -1: the rows are not sorted
        bool searched = false; ///< it is for the words in the search box
    };
    struct Removal
    {
        QPushButton &button;
        RowRemoval::Bar deleted;
    };
    struct Controls
    {
        RecordGrid &grid;
        QLineEdit &words;
        QPushButton &search;
        QPushButton &edit;
        QLabel &count;
        std::optional<Removal> removal = {}; ///< none where no row can be deleted
    };
    struct Context
    {
        store::ResultModel &rows;
        const QString &file;
        const core::TextLookup &texts;
        Asked first; ///< what it opens with
        std::function<QString(const QString &words)> searchQuery;
        /// The rows of a query in the order of a column; empty for one that does not sort.
        std::function<QString(int column, const QString &rows)> sortQuery = {};
        QStringList nameFields = {}; ///< what a row is called: the first of them that is not empty
        QString countSign;           ///< between "Total" and the number
        QString foundCountSign;      ///< the same after a search
    };

    /// The grid shows the rows already.
    SearchedList(const Context &context, const Controls &controls);

    /// Shows the rows that are asked for, and stands on the one of that SN once it is found, or else on the
    /// first. False, with the list as it was, where that fails; after another program's lock it is done
    /// later.
    bool show(const Asked &asked, std::optional<qint32> sn = {});
    /// The same with an empty search box: its words would not be what is shown.
    bool showUnsearched(const Asked &asked);
    bool search();
    /// Shows the rows in the order of a column; false for one that does not sort.
    bool sort(int column);
    /// What is shown, anew, or what it opens with; it stands where it stood. F5 does it, too.
    void refresh();
    /// After a row was saved: what is searched for, or else `all`.
    void follow(const Asked &all, std::optional<qint32> sn);

    const Asked &shown() const { return m_shown; }
    /// Of the row that it stands on; none without one, and where that is gone.
    std::optional<qint32> currentSn() const;
    /// A row behind the last stands for the last; before the first, the list stands on none.
    void standOn(int row);
    /// Deletes the selected rows if the operator says so, and stands on the one before the last that went.
    /// `ask` gets the question with the rows' name, or their number, below it.
    void removeSelected(const QString &question, const std::function<bool(const QString &question)> &ask);

Q_SIGNALS:
    /// The rows that were asked for are shown or, where not `whole`, the rows' trouble() keeps some of them,
    /// or all, from being shown.
    void answered(bool whole);
    void editAsked(int row);
    void removeAsked();
    /// By the Del key in the grid.
    void removeKeyPressed();
    void removed(qint32 sn);
    /// So many were; not `whole`: the next one could not be, and those behind it were left alone.
    void removalEnded(int rows, bool whole);
    void restored(qint32 sn);
    void restoringEnded(int rows, bool whole);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectControls();
    void connectRows();
    void connectWords();
    void searchTyped(std::optional<qint32> sn = {});
    void searchIfNew();
    void turnToList();
    bool leaveSearch();
    bool searchWords(std::optional<qint32> sn);
    Asked inChosenOrder(Asked asked) const;
    void settleWords();
    bool ask(const std::function<bool()> &question);
    void connectRemoval(const Removal &removal);
    std::vector<qint64> selectedNumbers() const;
    QString nameOf(const std::vector<qint64> &numbers) const;
    void offerCommands(bool onRow);
    void standOnWanted();
    void showAllFound();
    void answer(bool whole);
    void showCount(const QString &sign);

    Context m_context;
    Controls m_controls;
    store::ResultModel &m_rows;
    std::optional<RowRemoval> m_removal;
    Asked m_asked; ///< last
    Asked m_shown;
    int m_sortedColumn = -1;          ///< as the operator chose
    std::optional<qint32> m_wanted;   ///< the SN to stand on once it is found
    std::optional<qint32> m_restored; ///< last
    int m_standsOn = -1;              ///< the row where it was found last
    bool m_isWhole = false;           ///< as was last said by answered()
    QTimer m_pause;                   ///< runs until the operator pauses in the box of words
    QString m_settledWords;           ///< searched for last, or left alone since other rows were asked for
    bool m_searchesTyped = false;
    bool m_showsTyped = false; ///< the list shows what was searched for from the box
};

} // namespace appearance
