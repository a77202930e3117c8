#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"
#include "language/forms/FormTranslator.h"

#include <QComboBox>

namespace appearance {

/// The lists that free-text combo boxes remember, one for each box and language (see core::RememberedList).
class ComboLists
{
public:
    /// All must outlive the object.
    ComboLists(const core::Paths &paths, core::RunLog &log, const language::FormTranslator &translator)
        : m_paths(paths), m_log(log), m_translator(translator)
    {}

    /// Adds the remembered items to the box and leaves its text as it is.
    void ReadComboList(QComboBox &combo) const;
    /// Remembers the box's text, where no item equals it in every character. An empty text is nothing to pick
    /// again and is not remembered.
    void SaveComboItem(QComboBox &combo) const;

private:
    const core::Paths &m_paths;
    core::RunLog &m_log;
    const language::FormTranslator &m_translator;
};

} // namespace appearance
