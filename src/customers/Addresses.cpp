#include "customers/Addresses.h"

using namespace Qt::StringLiterals;

namespace customers {

void OpenIE(core::RunLog &log, core::Shell &shell, const QString &address)
{
    log.trap("OpenIE"_L1, [&] {
        const QString trimmed = address.trimmed();
        const bool isWhole =
            trimmed.startsWith("http://"_L1) || trimmed.startsWith("https://"_L1, Qt::CaseInsensitive);
        const QString prefix = isWhole ? QString() : u"http://"_s;
        if (!trimmed.isEmpty() && !shell.openPage(prefix + trimmed)) {
            throw core::Error(0, u"no web page: "_s + trimmed);
        }
    });
}

void SendEmail(core::RunLog &log, core::Shell &shell, const QString &address)
{
    log.trap("SendEmail"_L1, [&] {
        const QString trimmed = address.trimmed();
        if (!trimmed.isEmpty() && !shell.startMail(trimmed)) {
            throw core::Error(0, u"no mail address: "_s + trimmed);
        }
    });
}

} // namespace customers
