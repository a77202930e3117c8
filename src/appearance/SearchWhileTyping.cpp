#include "appearance/SearchWhileTyping.h"

#include "appearance/Keys.h"

#include <QScopedValueRollback>

namespace appearance {

namespace {

constexpr std::chrono::milliseconds typingPause{300};

} // namespace

void SearchWhileTyping::watch(QLineEdit &box, QAbstractItemView &list, const std::function<void()> &search)
{
    m_box = &box;
    m_list = &list;
    m_search = search;
    m_pause.setSingleShot(true);
    m_pause.setInterval(typingPause);
    QObject::connect(&box, &QLineEdit::returnPressed, &m_pause, [this] {
        if (m_found && m_box->text().trimmed() == m_settled) {
            turnToList();
        } else {
            run();
        }
    });
    QObject::connect(&box, &QLineEdit::textEdited, &m_pause, [this] { m_pause.start(); });
    QObject::connect(&m_pause, &QTimer::timeout, &m_pause, [this] { runIfNew(); });
    watchKeys();
}

void SearchWhileTyping::watchKeys()
{
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_PageDown}) {
        auto *down = new QShortcut(key, m_box, nullptr, nullptr, Qt::WidgetShortcut);
        QObject::connect(down, &QShortcut::activated, &m_pause, [this] {
            runIfNew();
            turnToList();
        });
    }
    onKeys(*m_box->window(), QKeySequence::Find, [this] {
        m_box->setFocus(Qt::ShortcutFocusReason);
        m_box->selectAll();
    });
}

void SearchWhileTyping::run()
{
    m_found = false;
    const QScopedValueRollback searching(m_searching, true);
    m_search();
}

void SearchWhileTyping::runIfNew()
{
    if (m_box->text().trimmed() != m_settled) {
        run();
    }
}

void SearchWhileTyping::turnToList()
{
    const QAbstractItemModel &rows = *m_list->model();
    if (rows.rowCount() == 0) {
        return;
    }
    if (!m_list->currentIndex().isValid()) {
        m_list->setCurrentIndex(rows.index(0, 0));
    }
    m_list->setFocus(Qt::ShortcutFocusReason);
}

bool SearchWhileTyping::leave()
{
    if (!m_box->hasFocus() || m_box->text().isEmpty()) {
        return false;
    }
    m_box->clear();
    run();
    return true;
}

void SearchWhileTyping::settle()
{
    m_pause.stop();
    m_settled = m_box->text().trimmed();
}

bool SearchWhileTyping::ask(const std::function<bool()> &question)
{
    const bool typed = m_pause.isActive();
    m_pause.stop();
    const bool answer = question();
    if (typed) {
        m_pause.start();
    }
    return answer;
}

} // namespace appearance
