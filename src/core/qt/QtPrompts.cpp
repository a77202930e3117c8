#include "core/qt/QtPrompts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace core {

namespace {

// Pairs of a name and a pattern, "(*.txt)|*.txt|(*.*)|*.*", in the form that Qt wants.
QString toolkitFilter(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        filters.append(parts.at(i).section(u'(', 0, 0) + u'(' + parts.at(i + 1) + u')');
    }
    return filters.join(u";;"_s);
}

QString firstSuffix(const QString &filter)
{
    return filter.section(u'|', 1, 1).section(u'.', -1);
}

} // namespace

// Counts the open prompts and tells when the last one has closed. `behind` is the window that a prompt
// belongs to.
class QtPrompts::OpenPrompt
{
public:
    OpenPrompt(QtPrompts &prompts, QWidget *behind) : m_prompts(prompts)
    {
        ++m_prompts.m_open;
        m_prompts.m_justBehind = behind;
    }
    ~OpenPrompt()
    {
        --m_prompts.m_open;
        m_prompts.m_actEnds.start();
        m_prompts.notifyClosed();
    }
    Q_DISABLE_COPY_MOVE(OpenPrompt)

private:
    QtPrompts &m_prompts;
};

QtPrompts::QtPrompts()
{
    m_actEnds.setSingleShot(true);
    QObject::connect(&m_actEnds, &QTimer::timeout, &m_actEnds, [this] { m_justBehind = nullptr; });
}

// A box belongs to the window that the operator works in; never to a tool window such as the caller's card,
// which may close under it. It must not be hidden behind a window that stays on top. Right after a box has
// closed no window is active yet: then the next box belongs to the same window.
QWidget *QtPrompts::windowBehind() const
{
    QWidget *active = QApplication::activeWindow();
    if (active != nullptr && active->windowType() != Qt::Tool) {
        return active;
    }
    if (m_justBehind != nullptr && m_justBehind->isVisible()) {
        return m_justBehind;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto main = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && window->inherits("QMainWindow");
    });
    return main != windows.end() ? *main : nullptr;
}

// Needed where the window has just been brought to the front: it is not the active one yet.
QWidget *QtPrompts::inFrontOf(QWidget *window) const
{
    return window != nullptr && window->isVisible() ? window : windowBehind();
}

void QtPrompts::tell(const QString &text, const QString &title, QWidget *window)
{
    ask({text, title, inFrontOf(window)}, QMessageBox::Ok, QMessageBox::Ok);
}

bool QtPrompts::askOkCancel(const QString &text, const QString &title)
{
    return ask({text, title, windowBehind()}, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel) ==
           QMessageBox::Ok;
}

Prompts::Answer QtPrompts::askSave(const QString &text, QWidget *window, const SaveWords &words)
{
    switch (ask({text, {}, inFrontOf(window), words},
                QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save)) {
    case QMessageBox::Save:
        return Answer::Save;
    case QMessageBox::Discard:
        return Answer::Discard;
    default:
        return Answer::Cancel;
    }
}

QString QtPrompts::saveFileName(const QString &proposed, const QString &filter)
{
    QWidget *behind = windowBehind();
    const OpenPrompt open(*this, behind);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QFileDialog dialog(behind, QString(), folder, toolkitFilter(filter));
    dialog.setObjectName(u"fileDialog"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(firstSuffix(filter));
    dialog.selectFile(proposed);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString QtPrompts::openFileName(const QString &filter)
{
    QWidget *behind = windowBehind();
    const OpenPrompt open(*this, behind);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QFileDialog dialog(behind, QString(), folder, toolkitFilter(filter));
    dialog.setObjectName(u"fileDialog"_s);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

int QtPrompts::ask(const Box &asked, int buttons, int defaultButton)
{
    QWidget *parent = asked.parent;
    const OpenPrompt open(*this, parent);
    QMessageBox box(parent);
    box.setObjectName(u"messageBox"_s);
    box.setWindowFlag(Qt::WindowStaysOnTopHint, parent == nullptr);
    box.setTextFormat(Qt::PlainText);
    box.setText(asked.text);
    box.setWindowTitle(!asked.title.isEmpty() ? asked.title
                       : parent != nullptr    ? parent->windowTitle()
                                              : u"CallDesk"_s);
    box.setIcon(buttons == QMessageBox::Ok ? QMessageBox::Information : QMessageBox::Question);
    box.setStandardButtons(QMessageBox::StandardButtons(buttons));
    box.setDefaultButton(static_cast<QMessageBox::StandardButton>(defaultButton));
    translate(box, asked.words);
    return box.exec();
}

void QtPrompts::translate(QMessageBox &box, const SaveWords &words) const
{
    for (const auto &[button, key] :
         {std::pair(QMessageBox::Ok, u"OK"_s), std::pair(QMessageBox::Cancel, words.cancel),
          std::pair(QMessageBox::Save, words.save), std::pair(QMessageBox::Discard, words.discard)}) {
        const QString word = texts() != nullptr ? texts()->Lms(key) : QString();
        if (QAbstractButton *shown = box.button(button); shown != nullptr && !word.isEmpty()) {
            shown->setText(word);
        }
    }
}

} // namespace core
