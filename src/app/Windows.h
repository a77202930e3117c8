#pragma once

#include "app/Outside.h"
#include "appearance/FormContext.h"
#include "copies/forms/CopyWindows.h"
#include "core/CodePage.h"
#include "core/Settings.h"
#include "customers/forms/CustomerWindows.h"
#include "help/forms/HelpWindow.h"
#include "imports/forms/ImportWindows.h"
#include "language/LanguageChoice.h"
#include "lookup/CallerDirectory.h"
#include "lookup/ExistenceChecks.h"
#include "mainwindow/forms/FrmMain.h"
#include "messages/forms/MessageWindows.h"
#include "notes/forms/NoteWindows.h"
#include "options/forms/OptionsWindows.h"
#include "phonebook/forms/PhoneBookWindows.h"
#include "reception/Endpoint.h"
#include "reception/Forwarding.h"
#include "reception/Senders.h"

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
        const core::TextLookup &texts;
        const language::LanguageState &language;
        const core::CodePage &codePage;
        lookup::CallerDirectory &callers;
        reception::Endpoint &endpoint;
        reception::Senders &senders;
        reception::Forwarding &forwarding;
        copies::CopyKeeper &copies;
        appearance::FormServices services;
        std::function<mainwindow::FrmMain &()> mainWindow;
        /// For an open card.
        std::function<void(core::RowKey caller, const QString &name)> callerRenamed;
    };
    explicit Windows(const Context &context);

    bool canShow(core::Window window) const override;
    void show(core::Window window) override;
    void ShowHelp(const QString &helpId) override;
    bool Show_Editor(core::RowKey caller) override;
    void addCaller(const QString &number, const QString &keyWord) override;
    void addCustomer(const QString &number, const QString &keyWord, const QString &name) override;
    void ShowCustomerByName(const QString &name) override;
    void ShowNotePad(const QString &customerName) override;
    bool addNote(qint32 customerSn) override;
    void showPhoneBook(const QString &query, QWidget *editor) override;
    void showCustomerList(const QString &query, QWidget *editor) override;

    /// Shows the text of a received short message, and whether the logs hold it.
    void showMessage(const messages::ReceivedMessages::Message &message)
    {
        m_messages.showReceived(message.text, message.filing);
    }
    /// The databases were exchanged by those of a copy: all follows as after an import, and the open notes.
    void deskRestored();
    /// The operator has read the messages in the main window.
    void messagesSeen() { m_messages.markAllSeen(); }

    /// Opens the caller-ID port, anew where it is open; the main window tells whether it can be received on.
    /// What the operator is to be told, if anything: that the port is in use.
    QString iniUDP() override;

    /// Closes all but the main window; false where the operator, asked about typed text that was not saved,
    /// wants to keep a window open.
    bool closeAll();

private:
    void refreshCustomerList() override;
    void SendTDRData(const core::CustomerInfo &info) override;
    void customerSaved(qint32 sn, const QString &oldName, const lookup::CustomerFacts &onFile) override;
    void customerDeleted(qint32 sn) override;
    void entrySaved(const phonebook::PhoneBookEntry &entry);
    void showCustomersOf(const copies::Copy &copy);
    void copyBeforeImport(const std::function<bool()> &ended) const;
    void customersImported(const imports::ImportReport &report);
    void entriesImported();
    void renameNotes(const QString &oldName, const QString &newName);
    std::optional<QString> senders() const override { return m_context.senders.text(); }
    QString sendersTrouble() const override { return m_context.senders.trouble(m_forms.texts); }
    QString sendersRefusal(const QString &text) const override
    {
        return reception::sendersRefusal(text, m_forms.texts);
    }
    bool saveSenders(const QString &text) override { return m_context.senders.save(text); }
    QStringList gridColumnNames() const override;
    QStringList hiddenGridColumns() const override;
    bool ChangeGridCfg(const QStringList &names) override;
    void iniGridCallerID_tarn() override;

    Context m_context;
    appearance::FormContext m_forms;
    lookup::ExistenceChecks m_checks;
    phonebook::PhoneBookWindows m_phoneBook;
    customers::CustomerWindows m_customers;
    imports::ImportWindows m_imports;
    notes::NoteWindows m_notes;
    messages::MessageWindows m_messages;
    options::OptionsWindows m_options;
    help::HelpWindow m_help;
    copies::CopyWindows m_copies;
};

} // namespace app
