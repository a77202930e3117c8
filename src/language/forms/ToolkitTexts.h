#pragma once

#include "core/TextLookup.h"

#include <QTranslator>

namespace language {

/// The texts that Qt itself shows: the menus of text boxes, the print preview, the dialogs for files
/// and printers. Those that every operator meets are texts of the language pack, under their English words
/// as keys; the others come from the translations that are installed with Qt, or, in a language that
/// Qt lacks, from the pack as well. The names of months and days follow, too.
class ToolkitTexts : public QTranslator
{
public:
    /// `texts` must outlive it.
    explicit ToolkitTexts(const core::TextLookup &texts) : m_texts(texts) {}

    /// Takes effect in windows that are made from now on. In a language that Qt does not know, such
    /// as "ID", the texts stay English.
    void install(const QString &code);

    /// Empty where the source text stands.
    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int n) const override;
    bool isEmpty() const override { return false; }

private:
    const core::TextLookup &m_texts;
    bool m_packHoldsAll = false;
};

} // namespace language
