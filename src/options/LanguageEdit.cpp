#include "options/LanguageEdit.h"

#include "store/SqlTokens.h"

using namespace Qt::StringLiterals;

namespace options {

QString languageRows(const QString &condition)
{
    const QString text = condition.trimmed();
    const QString all = u"select * from language where "_s;
    if (text.isEmpty()) {
        return all + u"1=1;"_s;
    }
    const QString pattern = u"'*"_s + store::quoted(text) + u"*'"_s;
    return all + u"[Item] like "_s + pattern + u" or [UserLanguage] like "_s + pattern +
           u" or [english] like "_s + pattern + u" order by [Item];"_s;
}

OwnTexts ownTexts(const core::SettingsRecord &record)
{
    const QString setting = record.LanguageSetting.text().toUpper();
    return {.useId = setting == "ID"_L1, .useUser = setting == "USER"_L1};
}

void chooseOwnTexts(core::SettingsRecord &record, OwnTexts choice)
{
    if (choice.useId) {
        record.LanguageSetting.setText(u"ID"_s);
    } else if (choice.useUser) {
        record.LanguageSetting.setText(u"USER"_s);
    }
}

} // namespace options
