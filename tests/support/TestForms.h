#pragma once

#include "appearance/FormContext.h"
#include "core/Settings.h"
#include "language/forms/FormTranslator.h"
#include "lookup/ExistenceChecks.h"
#include "support/TestDesk.h"

#include <QSignalSpy>
#include <QtWidgets>

namespace support {

/// The window of this class, and of this object name where one is given, that is shown; null without one.
template <typename Form>
Form *openForm(const QString &name = {})
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::find_if(windows.begin(), windows.end(), [&name](QWidget *window) {
        return qobject_cast<Form *>(window) != nullptr && window->isVisible() &&
               (name.isEmpty() || window->objectName() == name);
    });
    return shown != windows.end() ? qobject_cast<Form *>(*shown) : nullptr;
}

/// A control, by its name, of the window of a class once that opens; without one of them no test can go on.
template <typename Form, typename Control = QAbstractButton>
Control *find(const char *name)
{
    if (!QTest::qWaitFor([] { return openForm<Form>() != nullptr; }, 30000)) {
        qFatal("%s did not open", Form::staticMetaObject.className());
    }
    auto *control = openForm<Form>()->template findChild<Control *>(QLatin1String(name));
    if (control == nullptr) {
        qFatal("%s has no such %s", Form::staticMetaObject.className(), name);
    }
    return control;
}
template <typename Form>
void press(const char *button)
{
    QTest::mouseClick(find<Form>(button), Qt::LeftButton);
}
/// Types over what stands in a box, as a person does.
inline void typeOver(QWidget *box, const QString &text)
{
    box->setFocus();
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(box, text);
}
template <typename Form>
void type(const char *box, const QString &text)
{
    typeOver(find<Form, QWidget>(box), text);
}
/// What is done in an open window of this name, in words: "box=text" types over a box, "button" presses it.
inline void act(const QString &window, const QString &steps)
{
    for (const QString &step : steps.split(u' ')) {
        const QString name = step.section(u'=', 0, 0);
        const auto *form = openForm<QWidget>(window);
        auto *control = form != nullptr ? form->findChild<QWidget *>(name) : nullptr;
        QVERIFY2(control != nullptr, qPrintable(window + u' ' + name));
        if (step.contains(u'=')) {
            typeOver(control, step.section(u'=', 1));
        } else {
            QTest::mouseClick(control, Qt::LeftButton);
        }
    }
}

/// A desk with what forms need besides.
struct TestForms : TestDesk
{
    FakePrompts prompts;
    FakeNavigator navigator;
    FakeShell shell;
    FakeServer server;
    KeyTexts texts;
    core::Settings settings{paths, log};
    core::OpenForms openForms{log};
    core::WindowMemory windows{paths, log};
    core::CodePage codePage{936};
    lookup::NumberIndex numbers{paths, log, codePage};
    lookup::ExistenceChecks checks{{paths, log, numbers, texts, prompts, navigator}};
    language::LanguageState language{QStringLiteral("ENG"), {}, {}, {}};
    language::FormTranslator translator{texts, language, log};

    appearance::FormServices services() { return {translator, openForms, windows}; }
    appearance::FormContext context()
    {
        return {paths, values, log, texts, clock, prompts, shell, navigator, server, services()};
    }
};

} // namespace support
