#pragma once

#include "appearance/FormContext.h"
#include "options/OptionsLogic.h"

#include <QDialog>

#include <functional>
#include <memory>

namespace Ui {
class frmOptions;
}

namespace options {

/// The options dialog: two pages, each with its own button that saves. Deletes itself when closed.
class frmOptions : public QDialog
{
    Q_OBJECT

public:
    /// `showLanguageEditor` is called where the user's language file stands.
    frmOptions(const appearance::FormContext &context, const OptionsLogic::Context &options,
               std::function<void()> showLanguageEditor);
    ~frmOptions() override;

    /// The language setting was changed elsewhere.
    void showLanguage();
    void done(int result) override;

Q_SIGNALS:
    /// The language setting may have changed.
    void languageSaved();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void loadLanguages();
    void connectButtons();
    void showPopUpPage();
    void Init_lstGridCallerIDShowOrder_tarn();
    void showPort();
    void showSenders();
    void choosePage();
    void moveColumn(int rows);
    QStringList columnNames() const;
    OptionsLogic::PopUpPage popUpPage() const;
    OptionsLogic::SystemPage systemPage() const;
    /// They are false where something was not saved as it stands in the page; the operator was told.
    bool savePopUpPage();
    bool saveSystemPage();
    bool mayClose();
    QString savedText(bool saved) const;
    QString helpId() const;

    appearance::FormContext m_context;
    OptionsLogic m_logic;
    OptionsEffects &m_effects;
    OptionsLogic::PopUpPage m_storedPopUp; ///< both as they were read, or saved the last time
    OptionsLogic::SystemPage m_storedSystem;
    std::function<void()> m_showLanguageEditor;
    std::unique_ptr<Ui::frmOptions> m_ui;
    appearance::FormSetup m_setup;
};

} // namespace options
