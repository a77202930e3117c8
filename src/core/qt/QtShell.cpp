#include "core/qt/QtShell.h"

#include "core/platform.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace core {

bool QtShell::openPage(const QString &address)
{
    const QUrl url(address, QUrl::TolerantMode);
    const bool web = url.scheme() == "http"_L1 || url.scheme() == "https"_L1;
    return web && QDesktopServices::openUrl(url);
}

// Behind a "?" an address may carry a whole mail, with attachments. That is more than the operator asked for.
bool QtShell::startMail(const QString &address)
{
    QUrl url;
    url.setScheme(u"mailto"_s);
    url.setPath(address.section(u'?', 0, 0), QUrl::DecodedMode);
    return QDesktopServices::openUrl(url);
}

bool QtShell::openFile(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool QtShell::editText(const QString &path)
{
    const QString editor = platform::textEditor();
    if (!editor.isEmpty()) {
        return QProcess::startDetached(editor, path.isEmpty() ? QStringList() : QStringList(path));
    }
    return !path.isEmpty() && openFile(path);
}

} // namespace core
