#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "options/OptionsLogic.h"

#include <functional>
#include <memory>

namespace Ui {
class frmOptions;
}

namespace options {

/// The options dialog: two pages, each with its own button that saves. Deletes itself when closed.
class frmOptions : public appearance::Form
{
    Q_OBJECT

public:
    /// `showLanguageEditor` is called where the user's language file stands.
    frmOptions(const appearance::FormContext &context, const OptionsLogic::Context &options,
               std::function<void()> showLanguageEditor);
    ~frmOptions() override;

    /// The language setting was changed elsewhere.
    void showLanguage();

Q_SIGNALS:
    /// The language setting may have changed.
    void languageSaved();

protected:
    bool mayClose() override;
    void closing() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void loadLanguages();
    void connectButtons();
    void showPopUpPage();
    void Init_lstGridCallerIDShowOrder_tarn();
    void showPort();
    void showSenders();
    void moveColumn(int rows);
    QStringList columnNames() const;
    OptionsLogic::PopUpPage popUpPage() const;
    OptionsLogic::SystemPage systemPage() const;
    /// They are false where something was not saved as it stands in the page; the operator was told.
    bool savePopUpPage();
    bool saveSystemPage();
    QString savedText(bool saved) const;
    QString helpId() const;

    appearance::FormContext m_context;
    OptionsLogic m_logic;
    OptionsEffects &m_effects;
    OptionsLogic::PopUpPage m_storedPopUp; ///< both as they were read, or saved the last time
    OptionsLogic::SystemPage m_storedSystem;
    std::function<void()> m_showLanguageEditor;
    std::unique_ptr<Ui::frmOptions> m_ui;
};

} // namespace options
