#pragma once

#include "core/Clock.h"
#include "core/Paths.h"
#include "core/Prompts.h"
#include "core/RunLog.h"

namespace start {

/// What the start hands over; all of it outlives the call.
struct Context
{
    const core::Paths &paths;
    core::RunLog &log;
    const core::Clock &clock;
    core::Prompts &prompts;
    quint16 systemLanguageId = 0;
};

/// Where the start folder holds the databases of an old program, asks whether to convert them, and does so.
/// Before the answer nothing is written. False when they are still the old ones: the program is to end.
bool convertOldDesk(const Context &context);

} // namespace start
