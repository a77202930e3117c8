#include "app/Program.h"
#include "appearance/theme/Theme.h"
#include "appearance/theme/ThemedIcons.h"
#include "core/QtClock.h"
#include "core/platform.h"
#include "core/qt/QtPrinter.h"
#include "core/qt/QtPrompts.h"
#include "core/qt/QtShell.h"

#include <QApplication>
#include <QDir>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"calldesk"_s);
    QApplication::setDesktopFileName(u"org.calldesk.CallDesk"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(appearance::programIcon());
    appearance::applyTheme(application, core::platform::prefersDark());

    // quit() would first ask every window to close, and the main window answers by hiding; exit() asks
    // nobody.
    const auto endProcess = [] { QCoreApplication::exit(0); };
    core::QtPrompts prompts;
    core::QtShell shell;
    core::QtPrinter printer;
    const core::QtClock clock;
    app::Program program({.prompts = prompts,
                          .shell = shell,
                          .printer = printer,
                          .clock = clock,
                          .startFolder = QDir::currentPath(),
                          .dataFolder = core::platform::dataFolder(),
                          .runtimeFolder = core::platform::runtimeFolder(),
                          .developerFolder = core::platform::developerFolder(),
                          .systemLanguageId = core::platform::systemLanguageId(),
                          .port = reception::Endpoint::standardPort,
                          .endProcess = endProcess});
    return program.subMain() ? QApplication::exec() : 0;
}
