#include "help/HelpTexts.h"

#include "store/Database.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace help {

std::optional<QString> HelpTexts::ReadHelp(const QString &languageCode, const QString &helpId)
{
    return m_log.trap("ReadHelp"_L1, std::optional<QString>(), [&]() -> std::optional<QString> {
        const QString path =
            QDir::toNativeSeparators(m_paths.StartFolder + u"/Help/Help"_s + languageCode + u".chlp"_s);
        if (!QFile::exists(path)) {
            m_prompts.tell(u"Can't find Help File: "_s + path);
            return std::nullopt;
        }
        try {
            return read(path, helpId.trimmed());
        } catch (const core::Error &error) {
            tell(error, path);
            throw;
        }
    });
}

void HelpTexts::tell(const core::Error &error, const QString &path)
{
    const QString key = store::tellsOfLock(error) ? u"HeldElsewhere"_s : u"HelpFileDamaged"_s;
    m_prompts.tell(m_texts.Lms(key) + u'\n' + path);
}

QString HelpTexts::read(const QString &path, const QString &helpId) const
{
    store::Database database(path, store::Database::Mode::ReadOnly);
    store::Recordset pages = database.OpenRecordset(u"Help"_s);
    pages.setIndex(u"HelpID"_s);
    return pages.Seek(helpId) ? pages.value(u"Help"_s).toString() : QString();
}

} // namespace help
