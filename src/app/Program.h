#pragma once

#include "app/Outside.h"
#include "app/SingleInstance.h"
#include "app/Windows.h"
#include "appearance/FormSetup.h"
#include "areas/AreaCodes.h"
#include "copies/CopyKeeper.h"
#include "core/CodePage.h"
#include "core/OpenForms.h"
#include "core/Paths.h"
#include "core/ProcessValues.h"
#include "core/RunLog.h"
#include "core/Settings.h"
#include "core/WindowMemory.h"
#include "language/LanguagePack.h"
#include "language/ShownTexts.h"
#include "language/forms/FormTranslator.h"
#include "language/forms/ToolkitTexts.h"
#include "lookup/CallerDirectory.h"
#include "lookup/forms/CallerPopUp.h"
#include "mainwindow/AutoHide.h"
#include "mainwindow/forms/FrmMain.h"
#include "messages/ReceivedMessages.h"
#include "reception/CallEffects.h"
#include "reception/Dispatcher.h"
#include "reception/Endpoint.h"

#include <memory>

namespace app {

/// The whole program. Its members stand in building order: what stands above is known to what stands below.
class Program : private reception::CallEffects, private mainwindow::MainWindowCommands
{
public:
    explicit Program(const Outside &outside);
    ~Program() override;

    /// Starts in the fixed order; false when another instance runs or the desk is half converted, which the
    /// operator was told, when the desk is an old one that is not to be converted, and when the main window
    /// cannot be shown.
    bool subMain();

    /// The main window; only after a successful subMain().
    mainwindow::FrmMain &mainWindow() { return *m_mainWindow; }
    core::Navigator &windows() { return m_windows; }

private:
    void connectParts();
    bool becomeFirst();
    bool hasNewDatabases();
    bool iniPath();
    bool completeConversion();
    void tellHalfConverted(const QString &reason);
    void readSettings();
    void chooseLanguage();
    void retryLanguage();
    void tellTroubles();
    void nameProduct();
    void iniVariants();
    void setGridDefaults();
    void showMainForm();
    void paintAtOnce();
    void loadNumberIndex();
    void openReception();
    void tell(const QString &trouble);
    void maintainData();
    void keepCopies();
    void receive(const reception::Datagram &datagram);
    bool operatorEnds();

    void setMainWindowNormal() override;
    void showMainWindow() override;
    void ShowCallerID_tarn(const core::CallRecord &record) override;
    void showEarlierCall(const core::CallRecord &record, int newerCalls) override;
    void showCallAgain(const core::CallRecord &shown, const core::CallRecord &now) override;
    void showLastCaller() override;
    void ShowPopup(const core::CallRecord &record) override;
    void ShowSmallMessage(const QString &datagramText) override;
    bool byebye(const QString &prompt) override;
    bool eraseShortMessages() override;
    void messagesSeen() override { m_windows.messagesSeen(); }
    void handleSampleCall() override;
    QString describeLastDatagram() override;
    mainwindow::LastCaller lastCaller() override;

    Outside m_outside;
    SingleInstance m_instance;
    core::Paths m_paths;
    core::ProcessValues m_values;
    core::RunLog m_log;
    core::Settings m_settings;
    core::WindowMemory m_windowMemory;
    core::OpenForms m_openForms;
    language::LanguagePack m_language;
    language::ShownTexts m_texts{m_language};
    language::ToolkitTexts m_toolkitTexts;
    language::FormTranslator m_translator;
    appearance::FormServices m_formServices{m_translator, m_openForms, m_windowMemory};
    const core::CodePage m_codePage;
    lookup::CallerDirectory m_callers;
    QString m_areaPath;
    areas::AreaCodes m_areas;
    mainwindow::AutoHide m_autoHide;
    messages::ReceivedMessages m_messages;
    copies::CopyKeeper m_copies;
    reception::Senders m_senders;
    reception::Dispatcher m_dispatcher;
    reception::Endpoint m_endpoint;
    reception::Forwarding m_forwarding;
    Windows m_windows;
    lookup::CallerPopUp m_popUp;
    std::unique_ptr<mainwindow::FrmMain> m_mainWindow;
    QTimer m_languageRetry;
    bool m_ended = false;
};

} // namespace app
