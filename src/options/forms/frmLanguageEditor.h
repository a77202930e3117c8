#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "core/Settings.h"
#include "options/LanguageEdit.h"
#include "store/ResultModel.h"

#include <QPersistentModelIndex>

#include <memory>

namespace Ui {
class frmLanguageEditor;
}

namespace options {

/// Where operators write a translation of their own: every cell that they change is in the file at once.
/// Deletes itself when closed.
class frmLanguageEditor : public appearance::Form
{
    Q_OBJECT

public:
    /// The settings must outlive the form.
    frmLanguageEditor(const appearance::FormContext &context, core::Settings &settings);
    ~frmLanguageEditor() override;

    /// The language setting was changed elsewhere.
    void showLanguage();

Q_SIGNALS:
    /// The language setting may have changed.
    void languageSaved();

protected:
    bool mayClose() override { return keepTyped(); }
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void connectButtons();
    void loadGrid();
    void loadRows();
    void editRow(int row);
    /// Writes the text that is being typed; false where that fails: the operator was told, and types on.
    bool keepTyped();
    void showRows(bool read);
    void SetGrid();
    void refresh();
    void search();
    OwnTexts chosenTexts() const;
    void saveAndClose();

    appearance::FormContext m_context;
    core::Settings &m_settings;
    std::unique_ptr<Ui::frmLanguageEditor> m_ui;
    store::ResultModel Data1;
    OwnTexts m_storedTexts;              ///< as the settings hold the choice
    QPersistentModelIndex m_refusedCell; ///< could not be written, which the operator was not told yet
};

} // namespace options
