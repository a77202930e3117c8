#pragma once

#include <QLineEdit>
#include <QTimer>

#include <functional>

namespace appearance {

/// Runs a list's search at Enter, and a short pause after the last key where other words stand in the box
/// then. Ctrl+F turns to the box.
class SearchWhileTyping
{
public:
    /// Call once; the box must outlive this.
    void watch(QLineEdit &box, const std::function<void()> &search);
    /// Call in the search, and where rows are shown that were not searched for: a pause that has begun does
    /// not run out.
    void settle();
    /// Puts a question about a row that is shown, and gives its answer: a pause that has begun begins anew
    /// behind it, so that the rows stay as they are.
    bool ask(const std::function<bool()> &question);

private:
    QLineEdit *m_box = nullptr;
    QTimer m_pause;
    QString m_settled; ///< the words at the last `settle`
};

} // namespace appearance
