#pragma once

#include "appearance/FormContext.h"
#include "core/OpenForms.h"
#include "core/Settings.h"
#include "core/WindowMemory.h"
#include "language/FormTranslator.h"
#include "support/TestDesk.h"

#include <QSignalSpy>
#include <QtWidgets>

namespace support {

/// The window of this class that is shown, null without one.
template <typename Form>
Form *openForm()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::find_if(windows.begin(), windows.end(), [](QWidget *window) {
        return qobject_cast<Form *>(window) != nullptr && window->isVisible();
    });
    return shown != windows.end() ? qobject_cast<Form *>(*shown) : nullptr;
}

/// What forms need besides a desk.
struct TestForms
{
    TestDesk desk;
    FakePrompts prompts;
    FakeNavigator navigator;
    FakeShell shell;
    FakeServer server;
    KeyTexts texts;
    core::Settings settings{desk.paths, desk.log};
    core::OpenForms openForms{desk.log};
    core::WindowMemory windows{desk.paths, desk.log};
    language::LanguageState language{QStringLiteral("ENG"), {}, {}, {}};
    language::FormTranslator translator{texts, language, desk.log};

    appearance::FormServices services() { return {translator, openForms, windows}; }
    appearance::FormContext context()
    {
        return {desk.paths, desk.values, desk.log,  texts,  desk.clock,
                prompts,    shell,       navigator, server, services()};
    }
};

} // namespace support
