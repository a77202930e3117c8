#pragma once

#include "core/RunLog.h"
#include "core/TextLookup.h"
#include "language/LanguageChoice.h"

#include <QWidget>

namespace language {

/// Gives a form the language's font and texts; every form calls both members when it loads.
///
/// The designed English captions, titles, tips and accessible names are the text keys. They are kept beside
/// the controls, so that a form may be translated again into another language. Child windows are forms of
/// their own and are left alone.
class FormTranslator
{
public:
    /// All three must outlive the translator.
    FormTranslator(const core::TextLookup &texts, const LanguageState &language, core::RunLog &log)
        : m_texts(texts), m_language(language), m_log(log)
    {}

    /// The code of the language that forms are translated into, such as "ENG".
    const QString &languageCode() const { return m_language.code; }

    /// Sets the language's font on the form and its controls: never smaller than the desktop's own. A control
    /// with the dynamic property "fontScale" (a factor) gets that much more, one with "fontBold" is bold.
    void iniFormFonts(QWidget &form) const;

    /// Translates window title, captions, list items, grid headings, tab titles and tips, and mirrors the
    /// form for right-to-left languages. A text whose lookup is empty stays as designed; text boxes and combo
    /// boxes always do.
    void iniFormLang(QWidget &form) const;

private:
    const core::TextLookup &m_texts;
    const LanguageState &m_language;
    core::RunLog &m_log;
};

} // namespace language
