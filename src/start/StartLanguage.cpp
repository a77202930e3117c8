#include "start/StartLanguage.h"

#include "core/AtomicFile.h"
#include "core/Error.h"
#include "core/Settings.h"
#include "language/LanguageChoice.h"

using namespace Qt::StringLiterals;

namespace start {

namespace {

// Empty where there are no settings yet.
QString languageSetting(const QString &settingsFile)
{
    try {
        const QByteArray bytes = core::readBytes(settingsFile, 0, core::SettingsRecord::size);
        return core::SettingsRecord::fromBytes(bytes).LanguageSetting.text();
    } catch (const core::Error &) {
        return {};
    }
}

} // namespace

QString startLanguage(const core::Paths &paths, quint16 systemLanguageId)
{
    const QString system = language::osLanguage(systemLanguageId);
    const QString code = language::DecideLanguage(system, languageSetting(paths.SettingsFile));
    return code == "USER"_L1 ? language::DecideLanguage(system, {}) : code;
}

} // namespace start
