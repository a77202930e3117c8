#include "core/QtPrompts.h"

#include <QApplication>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace core {

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
    QMessageBox box(QApplication::activeWindow());
    box.setObjectName(u"messageBox"_s);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setWindowTitle(title.isEmpty() ? u"CallDesk"_s : title);
    box.setIcon(question ? QMessageBox::Question : QMessageBox::Information);
    box.setStandardButtons(question ? QMessageBox::Ok | QMessageBox::Cancel : QMessageBox::Ok);
    box.setDefaultButton(question ? QMessageBox::Cancel : QMessageBox::Ok);
    ++m_open;
    const bool ok = box.exec() == QMessageBox::Ok;
    --m_open;
    notifyClosed();
    return ok;
}

} // namespace core
