#include "appearance/Form.h"

#include "appearance/Keys.h"
#include "appearance/theme/ThemedIcons.h"
#include "core/TextUtilities.h"

#include <QCloseEvent>
#include <QPushButton>

#include <algorithm>

namespace appearance {

Form::Form(const FormServices &services, Qt::WindowFlags flags)
    : QWidget(nullptr, flags), m_setup(*this, services)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(programIcon());
}

// The control that has the keyboard loses it in the end, and may tell of a change then: a combo box takes the
// text of its list. What would hear of it is gone.
Form::~Form()
{
    for (const QObject *part : findChildren<QObject *>()) {
        part->disconnect(this);
    }
}

void Form::load(Place place)
{
    m_setup.load(place);
}

void Form::bringToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void Form::showBehind(QWidget *editor)
{
    if (editor == nullptr || !editor->isVisible()) {
        return bringToFront();
    }
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowState(windowState() & ~(Qt::WindowMinimized | Qt::WindowActive));
    show();
    raise();
    editor->raise();
    setAttribute(Qt::WA_ShowWithoutActivating, false);
}

void Form::offerHelp(core::Navigator &navigator, const std::function<QString()> &pageId,
                     const QList<QAbstractButton *> &buttons)
{
    const auto help = [&navigator, pageId] { navigator.ShowHelp(pageId()); };
    onKeys(*this, QKeySequence::HelpContents, help);
    for (const QAbstractButton *button : buttons) {
        connect(button, &QAbstractButton::clicked, this, help);
    }
}

void Form::offerHelp(core::Navigator &navigator, const QString &pageId,
                     const QList<QAbstractButton *> &buttons)
{
    offerHelp(
        navigator, [pageId] { return pageId; }, buttons);
}

void Form::nameInTitle(const QLineEdit &name)
{
    connect(&name, &QLineEdit::textChanged, this, [this, title = windowTitle()](const QString &text) {
        setWindowTitle(core::titleOf(text, title));
    });
}

// Of a form that is designed without a size, that is known only now.
void Form::showEvent(QShowEvent *event)
{
    if (!testAttribute(Qt::WA_Moved)) {
        FormSetup::center(*this);
    }
    QWidget::showEvent(event);
}

void Form::closeEvent(QCloseEvent *event)
{
    event->setAccepted(mayClose());
    if (event->isAccepted()) {
        m_closed = true;
        m_setup.rememberGeometry();
        closing();
    }
}

void Form::keyPressEvent(QKeyEvent *event)
{
    const bool enter = isEnter(*event) && !(event->modifiers() & ~Qt::KeypadModifier);
    QAbstractButton *const button = enter ? buttonOfEnter() : nullptr;
    if (event->matches(QKeySequence::Cancel)) {
        close();
    } else if (button != nullptr) {
        button->click();
    } else {
        QWidget::keyPressEvent(event);
    }
}

QAbstractButton *Form::buttonOfEnter() const
{
    auto *const focused = qobject_cast<QAbstractButton *>(focusWidget());
    if (focused != nullptr && !focused->isCheckable()) {
        return focused;
    }
    const QList<QPushButton *> buttons = findChildren<QPushButton *>();
    const auto standard = std::ranges::find_if(
        buttons, [](const QPushButton *button) { return button->isDefault() && button->isVisible(); });
    return standard != buttons.end() ? *standard : nullptr;
}

} // namespace appearance
