#pragma once

#include <QAbstractItemView>
#include <QLineEdit>
#include <QTimer>

#include <functional>

namespace appearance {

/// Runs a list's search at Enter, and a short pause after the last key where other words stand in the box
/// then. Ctrl+F turns to the box; Down, Page Down, and Enter where its words were searched for already, go
/// from it to what was found.
class SearchWhileTyping
{
public:
    /// Call once; the box and the list must outlive this.
    void watch(QLineEdit &box, QAbstractItemView &list, const std::function<void()> &search);
    /// Call in the search, and where rows are shown that were not searched for: a pause that has begun does
    /// not run out.
    void settle();
    /// Call wherever rows are shown: unless by a search from here, Enter searches for the words in the box
    /// again.
    void rowsShown() { m_found = m_searching; }
    /// Puts a question about a row that is shown, and gives its answer: a pause that has begun begins anew
    /// behind it, so that the rows stay as they are.
    bool ask(const std::function<bool()> &question);
    /// What Esc does first: leaves a search, where the keyboard is in its box. False where it is not.
    bool leave();

private:
    void watchKeys();
    void run();
    void runIfNew();
    void turnToList();

    QLineEdit *m_box = nullptr;
    QAbstractItemView *m_list = nullptr;
    std::function<void()> m_search;
    QTimer m_pause;
    QString m_settled; ///< the words at the last `settle`
    bool m_searching = false;
    bool m_found = false; ///< the list shows what was searched for
};

} // namespace appearance
