#include "core/QtPrompts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace core {

namespace {

// A box belongs to the window that the operator works in, never to a tool window such as a popup, which may
// close under it, and is never hidden behind a window that is in front of all.
QWidget *windowBehind()
{
    QWidget *active = QApplication::activeWindow();
    if (active != nullptr && active->windowType() != Qt::Tool) {
        return active;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto main = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && window->inherits("QMainWindow");
    });
    return main != windows.end() ? *main : nullptr;
}

} // namespace

void QtPrompts::tell(const QString &text)
{
    ask(text, {}, false);
}

bool QtPrompts::askOkCancel(const QString &text, const QString &title)
{
    return ask(text, title, true);
}

bool QtPrompts::ask(const QString &text, const QString &title, bool question)
{
    QWidget *parent = windowBehind();
    QMessageBox box(parent);
    box.setObjectName(u"messageBox"_s);
    box.setWindowFlag(Qt::WindowStaysOnTopHint, parent == nullptr);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setWindowTitle(!title.isEmpty() ? title : parent != nullptr ? parent->windowTitle() : u"CallDesk"_s);
    box.setIcon(question ? QMessageBox::Question : QMessageBox::Information);
    box.setStandardButtons(question ? QMessageBox::Ok | QMessageBox::Cancel : QMessageBox::Ok);
    box.setDefaultButton(question ? QMessageBox::Cancel : QMessageBox::Ok);
    translate(box);
    ++m_open;
    const bool ok = box.exec() == QMessageBox::Ok;
    --m_open;
    notifyClosed();
    return ok;
}

void QtPrompts::translate(QMessageBox &box) const
{
    for (const auto &[button, key] :
         {std::pair(QMessageBox::Ok, u"OK"_s), std::pair(QMessageBox::Cancel, u"Cancel"_s)}) {
        const QString word = texts() != nullptr ? texts()->Lms(key) : QString();
        if (QAbstractButton *shown = box.button(button); shown != nullptr && !word.isEmpty()) {
            shown->setText(word);
        }
    }
}

} // namespace core
