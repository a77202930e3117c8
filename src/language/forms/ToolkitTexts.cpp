#include "language/forms/ToolkitTexts.h"

#include "language/Languages.h"
#include "language/forms/Captions.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace language {

namespace {

constexpr QLatin1StringView sharedTexts[] = {"Cancel"_L1,
                                             "Close"_L1,
                                             "Copy"_L1,
                                             "Cut"_L1,
                                             "Delete"_L1,
                                             "First page"_L1,
                                             "Fit page"_L1,
                                             "Fit width"_L1,
                                             "Help"_L1,
                                             "Landscape"_L1,
                                             "Last page"_L1,
                                             "Next page"_L1,
                                             "No"_L1,
                                             "OK"_L1,
                                             "Page setup"_L1,
                                             "Paste"_L1,
                                             "Portrait"_L1,
                                             "Previous page"_L1,
                                             "Print"_L1,
                                             "Print Preview"_L1,
                                             "Redo"_L1,
                                             "Save"_L1,
                                             "Select All"_L1,
                                             "Show facing pages"_L1,
                                             "Show overview of all pages"_L1,
                                             "Show single page"_L1,
                                             "Step down"_L1,
                                             "Step up"_L1,
                                             "Undo"_L1,
                                             "Yes"_L1,
                                             "Zoom in"_L1,
                                             "Zoom out"_L1};

// Qt asks for the captions of our own forms, too. They are text keys and must stay as they are designed.
bool isToolkit(QLatin1StringView context)
{
    return context.startsWith(u'Q') || context.startsWith("Print Device"_L1);
}

// As names of keys, "Return" and "Up" are other words than the captions "Return" and "Up".
bool isNameOfKey(QLatin1StringView context)
{
    return context == "QShortcut"_L1;
}

bool isShared(const QString &key)
{
    return std::ranges::any_of(sharedTexts, [&key](QLatin1StringView text) {
        return key.compare(text, Qt::CaseInsensitive) == 0; // as keys of texts are compared
    });
}

} // namespace

void ToolkitTexts::install(const QString &code)
{
    const Language *language = languageOf(code);
    const bool isKnown = language && !language->locale.isEmpty();
    m_packHoldsAll = isKnown && language->toolkitFile.isEmpty();
    if (isKnown) {
        QLocale::setDefault(QLocale(language->locale));
        // If the translation is not installed, the rest stays English.
        static_cast<void>(load(language->toolkitFile, QLibraryInfo::path(QLibraryInfo::TranslationsPath)));
    }
    QCoreApplication::installTranslator(this);
}

QString ToolkitTexts::translate(const char *context, const char *sourceText, const char *disambiguation,
                                int n) const
{
    if (!isToolkit(QLatin1StringView(context))) {
        return {};
    }
    const QString key = withoutMnemonic(QString::fromUtf8(sourceText));
    const bool isOurs = !isNameOfKey(QLatin1StringView(context)) && (m_packHoldsAll || isShared(key));
    const QString ours = isOurs ? m_texts.Lms(key.trimmed()) : QString();
    if (ours.isEmpty()) {
        return QTranslator::translate(context, sourceText, disambiguation, n);
    }
    return key.endsWith(u' ') ? ours + u' ' : ours; // leads into a name
}

} // namespace language
