#include "start/forms/OldDesk.h"

#include "conversion/DeskConversion.h"
#include "language/ShownTexts.h"
#include "language/forms/FormTranslator.h"
#include "start/StartLanguage.h"
#include "start/forms/frmConvertDesk.h"

#include <QApplication>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace start {

bool convertOldDesk(const Context &context)
{
    const QString &folder = context.paths.StartFolder;
    if (!conversion::isOldDesk(folder)) {
        return true;
    }
    const QString code = startLanguage(context.paths, context.systemLanguageId);
    const language::BuiltInTexts texts(code); // the language files may be old databases, too
    const language::LanguageState language{code, {}, {}, language::fontChoice(code)};
    context.prompts.setTexts(&texts);
    const auto back = qScopeGuard([&] { context.prompts.setTexts(nullptr); });
    QApplication::setLayoutDirection(language::layoutDirection(code));
    const language::FormTranslator translator(texts, language, context.log);
    frmConvertDesk question({folder, context.clock.now().date(), texts, translator, context.prompts});
    return question.exec() == QDialog::Accepted;
}

} // namespace start
