#include "appearance/ComboLists.h"

#include "core/RememberedList.h"

using namespace Qt::StringLiterals;

namespace appearance {

void ComboLists::ReadComboList(QComboBox &combo) const
{
    m_log.trap("ReadComboList"_L1, [&] {
        const QString text = combo.currentText();
        combo.addItems(
            core::RememberedList(m_paths, combo.objectName(), m_translator.languageCode()).items());
        combo.setCurrentIndex(-1);
        combo.setEditText(text);
    });
}

void ComboLists::SaveComboItem(QComboBox &combo) const
{
    m_log.trap("SaveComboItem"_L1, [&] {
        const QString text = combo.currentText();
        if (text.isEmpty() || combo.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0) {
            return;
        }
        core::RememberedList(m_paths, combo.objectName(), m_translator.languageCode()).append(text);
        combo.addItem(text);
    });
}

} // namespace appearance
