#pragma once

#include "DatagramTemplate.h"

#include <vector>

namespace sim {

struct SceneStep
{
    qint64 atNanoseconds = 0; ///< after the start of the scene
    QString say;              ///< printed when the step is played; may be empty
    DatagramTemplate datagram;
};

/// A scene file: lines of a time and the options of one datagram, as the help text of the program tells. A
/// step without a code page of its own gets `codePage`. Throws UsageError with the number of the line that is
/// wrong.
std::vector<SceneStep> parseScene(const QString &text, const CodePageChoice &codePage);

} // namespace sim
