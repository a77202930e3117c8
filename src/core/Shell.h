#pragma once

#include <QString>

namespace core {

/// The door to other programs. Each call only asks the system; what comes of it is not known. False where the
/// system refused at once.
class Shell
{
public:
    virtual ~Shell() = default;
    /// Opens a web page; anything but an http or https address is refused.
    virtual bool openPage(const QString &address) = 0;
    /// Starts a mail to the address.
    virtual bool startMail(const QString &address) = 0;
    /// Opens a file with the program that the system has for its kind.
    virtual bool openFile(const QString &path) = 0;
    /// Opens a file in the system's text editor; an empty path opens the editor alone.
    virtual bool editText(const QString &path) = 0;
};

} // namespace core
