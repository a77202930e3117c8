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
template <typename Form>
void type(const char *box, const QString &text)
{
    auto *edit = find<Form, QWidget>(box);
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(edit, text);
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
