#pragma once

#include "app/Outside.h"
#include "appearance/FormContext.h"
#include "core/CodePage.h"
#include "core/Settings.h"
#include "customers/CustomerWindows.h"
#include "help/HelpWindow.h"
#include "language/LanguagePack.h"
#include "lookup/ExistenceChecks.h"
#include "lookup/NumberIndex.h"
#include "mainwindow/FrmMain.h"
#include "messages/MessageWindows.h"
#include "notes/NoteWindows.h"
#include "options/OptionsWindows.h"
#include "phonebook/PhoneBookWindows.h"
#include "reception/Endpoint.h"
#include "reception/Forwarding.h"
#include "store/CustomerPopUpTable.h"

#include <functional>

namespace app {

/// The windows of all folders, opened for each other, and what a change made in one of them causes elsewhere.
class Windows : public core::Navigator, private customers::CustomerEffects, private options::OptionsEffects
{
public:
    /// All of it must outlive the windows. The main window comes later and is there before any of them opens.
    struct Context
    {
        const Outside &outside;
        const core::Paths &paths;
        core::ProcessValues &values;
        core::RunLog &log;
        core::Settings &settings;
        const language::LanguagePack &language;
        const core::CodePage &codePage;
        lookup::NumberIndex &numbers;
        store::CustomerPopUpTable &popUpTable;
        reception::Endpoint &endpoint;
        reception::Forwarding &forwarding;
        appearance::FormServices services;
        std::function<mainwindow::FrmMain &()> mainWindow;
        std::function<void(bool known)> numbersChanged; ///< false: a change could not be read from the file
        std::function<void(qint32 sn, const QString &name)> customerRenamed; ///< for an open card
    };
    explicit Windows(const Context &context);

    bool canShow(core::Window window) const override;
    void show(core::Window window) override;
    void ShowHelp(const QString &helpId) override;
    void Show_Editor(const QString &source, qint32 sn) override;
    void addCaller(const QString &number, const QString &keyWord) override;
    void addCustomer(const QString &number, const QString &keyWord) override;
    void ShowCustomerByName(const QString &name) override;
    void ShowNotePad(const QString &customerName) override;
    void showPhoneBook(const QString &query, QWidget *editor) override;
    void showCustomerList(const QString &query, QWidget *editor) override;

    /// Shows the text of a received short message.
    void showMessage(const QString &text) { m_messages.showReceived(text); }
    /// The operator has read the messages in the main window.
    void messagesSeen() { m_messages.markAllSeen(); }

    /// Opens the caller-ID port, anew where it is open; the main window tells whether it can be received on.
    void iniUDP() override;

    /// Closes all but the main window; false where the operator, asked about typed text that was not saved,
    /// wants to keep a window open.
    bool closeAll();

private:
    void refreshCustomerList() override;
    void SendTDRData(const core::CustomerInfo &info) override;
    void customerSaved(qint32 sn, const QString &oldName, const QString &newName) override;
    void customerDeleted(qint32 sn) override;
    void renameNotes(const QString &oldName, const QString &newName);
    bool updateNumbers(qint32 sn);
    QStringList gridColumnNames() const override;
    QStringList hiddenGridColumns() const override;
    void ChangeGridCfg(const QStringList &names) override;
    void iniGridCallerID_tarn() override;

    Context m_context;
    appearance::FormContext m_forms;
    lookup::ExistenceChecks m_checks;
    phonebook::PhoneBookWindows m_phoneBook;
    customers::CustomerWindows m_customers;
    notes::NoteWindows m_notes;
    messages::MessageWindows m_messages;
    options::OptionsWindows m_options;
    help::HelpWindow m_help;
};

} // namespace app
