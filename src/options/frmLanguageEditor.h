#pragma once

#include "appearance/FormContext.h"
#include "core/Settings.h"
#include "store/ResultModel.h"

#include <QDialog>

#include <functional>
#include <memory>

namespace Ui {
class frmLanguageEditor;
}

namespace options {

/// Where operators write a translation of their own: every cell that they change is in the file at once.
/// Deletes itself when closed.
class frmLanguageEditor : public QDialog
{
    Q_OBJECT

public:
    /// `languageChosen` is called after the language setting was saved; the settings must outlive the form.
    frmLanguageEditor(const appearance::FormContext &context, core::Settings &settings,
                      std::function<void()> languageChosen);
    ~frmLanguageEditor() override;

    void done(int result) override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void connectButtons();
    void loadGrid();
    void loadRows();
    /// Whether a text could not be written, which the operator has not been told of before.
    bool tellRefusal();
    void showRows(bool read);
    void SetGrid();
    void refresh();
    void search();
    void saveAndClose();

    appearance::FormContext m_context;
    core::Settings &m_settings;
    std::function<void()> m_languageChosen;
    std::unique_ptr<Ui::frmLanguageEditor> m_ui;
    store::ResultModel Data1;
    appearance::FormSetup m_setup;
    bool m_textRefused = false;
};

} // namespace options
