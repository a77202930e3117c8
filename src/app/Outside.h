#pragma once

#include "core/Clock.h"
#include "core/Printer.h"
#include "core/Prompts.h"
#include "core/Shell.h"
#include "reception/Endpoint.h"

#include <QString>

#include <functional>

namespace app {

/// All that the program takes from the world, handed in by main() or by a test.
struct Outside
{
    core::Prompts &prompts;
    core::Shell &shell;
    core::Printer &printer;
    const core::Clock &clock;
    QString startFolder;
    QString dataFolder;
    QString runtimeFolder;   ///< holds the instance lock
    QString developerFolder; ///< its existence switches the developer mode on; empty: never
    quint16 systemLanguageId = 0;
    quint16 port = reception::Endpoint::standardPort;
    std::function<void()> endProcess;
};

} // namespace app
