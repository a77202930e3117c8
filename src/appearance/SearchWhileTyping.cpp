#include "appearance/SearchWhileTyping.h"

#include "appearance/Keys.h"

namespace appearance {

namespace {

constexpr std::chrono::milliseconds typingPause{300};

} // namespace

void SearchWhileTyping::watch(QLineEdit &box, const std::function<void()> &search)
{
    m_box = &box;
    m_pause.setSingleShot(true);
    m_pause.setInterval(typingPause);
    QObject::connect(&box, &QLineEdit::returnPressed, &m_pause, search);
    QObject::connect(&box, &QLineEdit::textEdited, &m_pause, [this] { m_pause.start(); });
    QObject::connect(&m_pause, &QTimer::timeout, &m_pause, [this, search] {
        if (m_box->text().trimmed() != m_settled) {
            search();
        }
    });
    onKeys(*box.window(), QKeySequence::Find, [&box] {
        box.setFocus(Qt::ShortcutFocusReason);
        box.selectAll();
    });
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
