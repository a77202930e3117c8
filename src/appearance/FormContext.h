#pragma once

#include "appearance/FormSetup.h"
#include "core/Clock.h"
#include "core/Navigator.h"
#include "core/Prompts.h"
#include "core/Server.h"
#include "core/Shell.h"
#include "core/TextLookup.h"

namespace appearance {

/// What lists, editors and dialogs get from the program; all of it outlives them.
struct FormContext
{
    const core::Paths &paths;
    const core::ProcessValues &values;
    core::RunLog &log;
    const core::TextLookup &texts;
    const core::Clock &clock;
    core::Prompts &prompts;
    core::Shell &shell;
    core::Navigator &navigator;
    core::Server &server;
    FormServices services;
};

} // namespace appearance
