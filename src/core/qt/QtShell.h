#pragma once

#include "core/Shell.h"

namespace core {

/// The desktop's own programs.
class QtShell : public Shell
{
public:
    bool openPage(const QString &address) override;
    bool startMail(const QString &address) override;
    bool openFile(const QString &path) override;
    bool editText(const QString &path) override;
};

} // namespace core
