#include "app/Program.h"
#include "appearance/Theme.h"
#include "appearance/ThemedIcons.h"
#include "core/QtClock.h"
#include "core/QtPrinter.h"
#include "core/QtPrompts.h"
#include "core/QtShell.h"
#include "core/platform.h"

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

    // Not quit(), which first asks every window to close, and ours only hide.
    const auto endProcess = [] { QCoreApplication::exit(0); };
    core::QtPrompts prompts;
    core::QtShell shell;
    core::QtPrinter printer;
    const core::QtClock clock;
    app::Program program({prompts, shell, printer, clock, QDir::currentPath(), core::platform::dataFolder(),
                          core::platform::runtimeFolder(), core::platform::developerFolder(),
                          core::platform::systemLanguageId(), reception::Endpoint::standardPort, endProcess});
    return program.subMain() ? QApplication::exec() : 0;
}
