#include "app/Program.h"

#include "conversion/DeskConversion.h"
#include "core/AtomicFile.h"
#include "core/ProductName.h"
#include "core/TextUtilities.h"
#include "core/platform.h"
#include "reception/Records.h"
#include "reception/SampleRecord.h"
#include "start/forms/OldDesk.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace app {

Program::Program(const Outside &outside)
    : m_outside(outside), m_instance(outside.runtimeFolder),
      m_paths(core::pathsBelow(outside.startFolder, outside.dataFolder)),
      m_log(m_paths, outside.clock, m_values), m_settings(m_paths, m_log), m_windowMemory(m_paths, m_log),
      m_openForms(m_log), m_language(m_paths, m_log, outside.prompts, m_settings, outside.systemLanguageId),
      m_toolkitTexts(m_language), m_translator(m_texts, m_language.state(), m_log),
      m_codePage(core::platform::ansiCodePage(outside.systemLanguageId)),
      m_callers(m_paths, m_log, m_codePage), m_areas(m_log), m_messages(m_paths, m_log, outside.clock),
      m_copies({.paths = m_paths,
                .log = m_log,
                .clock = outside.clock,
                .texts = m_texts,
                .prompts = outside.prompts}),
      m_senders(m_paths, m_log, outside.clock),
      m_dispatcher(m_settings, m_log, m_values, m_codePage, m_callers, *this),
      m_endpoint({.settings = m_settings,
                  .log = m_log,
                  .prompts = outside.prompts,
                  .texts = m_texts,
                  .codePage = m_codePage,
                  .senders = m_senders},
                 outside.port, [this](const reception::Datagram &datagram) { receive(datagram); }),
      m_forwarding({.settings = m_settings, .log = m_log, .codePage = m_codePage, .senders = m_senders}),
      m_windows({.outside = m_outside,
                 .paths = m_paths,
                 .values = m_values,
                 .log = m_log,
                 .settings = m_settings,
                 .texts = m_texts,
                 .language = m_language.state(),
                 .codePage = m_codePage,
                 .callers = m_callers,
                 .endpoint = m_endpoint,
                 .senders = m_senders,
                 .forwarding = m_forwarding,
                 .copies = m_copies,
                 .services = m_formServices,
                 .mainWindow = [this]() -> mainwindow::FrmMain & { return *m_mainWindow; },
                 .callerRenamed = [this](core::RowKey caller,
                                         const QString &name) { m_popUp.callerRenamed(caller, name); }}),
      m_popUp({.paths = m_paths,
               .log = m_log,
               .settings = m_settings,
               .texts = m_texts,
               .clock = m_outside.clock,
               .navigator = m_windows,
               .services = m_formServices,
               .mainWindow = [this]() -> const QWidget & { return *m_mainWindow; }})
{
    connectParts();
}

void Program::connectParts()
{
    using lookup::CallerDirectory;
    QObject::connect(&m_callers, &CallerDirectory::loading, &m_endpoint, &reception::Endpoint::hold);
    QObject::connect(&m_endpoint, &reception::Endpoint::callWaits, &m_endpoint,
                     [this](bool waits) { m_mainWindow->showCallWaits(waits); });
    QObject::connect(&m_callers, &CallerDirectory::customersRead, &m_callers,
                     [this] { m_dispatcher.lookAgain(); });
    QObject::connect(&m_languageRetry, &QTimer::timeout, &m_languageRetry, [this] { retryLanguage(); });
    QObject::connect(&m_copies, &copies::CopyKeeper::failing, &m_copies,
                     [this](bool isFailing) { m_mainWindow->showCopyFailing(isFailing); });
    QObject::connect(&m_copies, &copies::CopyKeeper::restored, &m_copies,
                     [this] { m_windows.deskRestored(); });
    m_messages.onFilingChanged(
        [this](messages::Filing filing) { m_mainWindow->showMessageLogs(messages::filingKey(filing)); });
}

// Delete closed windows now, while the objects that they use still exist.
Program::~Program()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_outside.prompts.setTexts(nullptr);
    m_outside.prompts.setClosedHandler({});
}

// A step that fails is logged, and the next one runs all the same. Only without a main window is there no
// program: nobody could see it, or end it.
bool Program::subMain()
{
    const auto step = [this](void (Program::*part)()) {
        return m_log.trap("subMain"_L1, [&] { (this->*part)(); });
    };
    if (!becomeFirst() || !hasNewDatabases() ||
        !m_log.trap("subMain"_L1, true, [this] { return iniPath(); })) {
        return false;
    }
    step(&Program::readSettings);
    step(&Program::chooseLanguage);
    step(&Program::nameProduct);
    step(&Program::iniVariants);
    step(&Program::setGridDefaults);
    if (!step(&Program::showMainForm)) {
        return false;
    }
    step(&Program::loadNumberIndex); // before a call can come in
    step(&Program::openReception);
    step(&Program::maintainData);
    step(&Program::tellTroubles);
    step(&Program::keepCopies);
    return true;
}

// If the lock cannot be used at all, start: a second program is a lesser evil than none.
bool Program::becomeFirst()
{
    if (m_log.trap("SingleInstance"_L1, true, [&] { return m_instance.tryToBeFirst(); })) {
        return true;
    }
    m_instance.callRunningToFront();
    m_outside.prompts.tell(u"App is runing!"_s);
    return false;
}

bool Program::hasNewDatabases()
{
    return m_log.trap("convertOldDesk"_L1, true, [&] {
        return start::convertOldDesk({.paths = m_paths,
                                      .log = m_log,
                                      .clock = m_outside.clock,
                                      .prompts = m_outside.prompts,
                                      .systemLanguageId = m_outside.systemLanguageId});
    });
}

bool Program::iniPath()
{
    for (const QString &folder : {m_paths.DataFolder, m_paths.SmsFolder}) {
        m_log.trap("iniPath"_L1, [&] { core::makePrivateFolder(folder); });
    }
    if (!completeConversion()) { // nothing is written to such a desk
        return false;
    }
    m_log.trap("iniPath"_L1, [&] { core::makeFolder(m_paths.PopUserDataFolder); }); // the desks share it
    for (const QString &written : {m_paths.SettingsFile, m_paths.WindowsFile}) {
        core::removeLeftBeside(written);
    }
    m_values.CustomerDbExists = QFileInfo(m_paths.CustomerFile).isFile();
    return true;
}

bool Program::completeConversion()
{
    try {
        if (conversion::completeConversion(m_paths.StartFolder)) {
            m_log.WriteRunLog(u"The conversion of the old databases is completed."_s);
        }
    } catch (const core::Error &error) {
        m_log.reportError(u"!completeConversion "_s, error);
        tellHalfConverted(error.description());
        return false;
    }
    return true;
}

// In the operator's language, unless its file is one of those that the unfinished conversion has moved.
void Program::tellHalfConverted(const QString &reason)
{
    readSettings();
    if (QFileInfo(m_paths.LangFile).isFile()) {
        chooseLanguage();
    }
    m_outside.prompts.tell(m_texts.Lms(u"ConversionUnfinished"_s) + u"\n\n"_s +
                           QDir::toNativeSeparators(m_paths.StartFolder) + u'\n' + reason);
}

void Program::readSettings()
{
    m_values.DeveloperMode = !core::FolderExists(m_outside.developerFolder).isEmpty();
    m_settings.Get_misc();
    m_windowMemory.load();
}

void Program::chooseLanguage()
{
    m_outside.prompts.setTexts(&m_texts);
    m_language.iniLanguage();
    const QString &code = m_language.state().code;
    m_toolkitTexts.install(code);
    QApplication::setLayoutDirection(language::layoutDirection(code));
}

// The language file was locked when the program started. Windows that have been opened since then show the
// right language when they are opened again.
void Program::retryLanguage()
{
    if (m_language.retry()) {
        m_languageRetry.stop();
        m_values.ProductDisplayName = core::productName(m_values.OemMark, m_texts);
        m_mainWindow->showTexts();
        tellTroubles();
    }
}

void Program::tellTroubles()
{
    m_language.tellUnreadable();
}

void Program::nameProduct()
{
    m_values.OemMark =
        m_log.trap("ReadMdrOemMark"_L1, QString(), [&] { return core::ReadMdrOemMark(m_paths); });
    m_values.ProductDisplayName = core::productName(m_values.OemMark, m_texts);
    m_autoHide.clear();
}

void Program::iniVariants()
{
    m_log.trap("iniVariants"_L1, [&] {
        m_values.AppVersion = u"1.00C42"_s;
        m_values.MaxGridRows = 300;
        const language::Language *language = language::languageOf(m_language.state().code);
        m_values.WordSeparator = !language || language->separatesWords ? u" "_s : QString();
    });
}

void Program::setGridDefaults()
{
    if (m_settings.record.gridColumnNames.isUnset()) {
        m_settings.SetDefaulteMisc_tarn();
    }
}

void Program::showMainForm()
{
    const mainwindow::FrmMain::Context context = {.paths = m_paths,
                                                  .values = m_values,
                                                  .log = m_log,
                                                  .settings = m_settings,
                                                  .texts = m_texts,
                                                  .prompts = m_outside.prompts,
                                                  .navigator = m_windows,
                                                  .autoHide = m_autoHide,
                                                  .commands = *this,
                                                  .services = m_formServices};
    m_mainWindow = std::make_unique<mainwindow::FrmMain>(context);
    QObject::connect(&m_callers, &lookup::CallerDirectory::availableChanged, m_mainWindow.get(),
                     &mainwindow::FrmMain::showCustomersAvailable);
    m_mainWindow->showCustomersAvailable(m_callers.isAvailable());
    m_mainWindow->show();
    paintAtOnce();
    m_instance.onSecondInstance([this] { m_mainWindow->restoreToFront(); });
    if (m_language.isLocked()) {
        m_languageRetry.start(std::chrono::milliseconds(500));
    }
}

// Show the window before the databases are looked after, which takes a while on a large desk. Neither calls
// nor keys are let in: what they need is not there yet.
void Program::paintAtOnce()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
}

void Program::loadNumberIndex()
{
    m_callers.load();
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &m_callers,
                     [this](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive) {
                             m_callers.look();
                         }
                     });
}

void Program::openReception()
{
    tell(m_windows.iniUDP());
    m_forwarding.Ini_TDR_UDP();
    tell(m_senders.trouble(m_texts));
}

void Program::tell(const QString &trouble)
{
    if (!trouble.isEmpty()) {
        m_outside.prompts.tell(trouble);
    }
}

void Program::maintainData()
{
    m_callers.fixCustomers();
    m_areaPath = areas::MakeAreaPath(m_log, m_paths.StartFolder);
    m_areas.load(m_areaPath);
    m_callers.addCallNoteTables();
}

// After the numbers are read: the copying reads the same files, and calls need those first. In the turn after
// that it is known whether they could be read.
void Program::keepCopies()
{
    const auto start = [this] { m_copies.start(m_values.CustomerDbExists && !m_callers.isAvailable()); };
    if (m_callers.numbers().isLoading()) {
        const auto ended = [start](bool begins) {
            if (!begins) {
                start();
            }
        };
        QObject::connect(&m_callers, &lookup::CallerDirectory::loading, &m_copies, ended,
                         Qt::QueuedConnection);
    } else {
        QTimer::singleShot(0, &m_copies, start);
    }
}

// The tray's menu works while a message box or the printer's dialog is open. Closing windows would delete
// that box under the code that waits for its answer, so the operator has to answer first.
bool Program::operatorEnds()
{
    if (m_outside.prompts.isOpen() || QApplication::activeModalWidget() != nullptr) {
        m_mainWindow->restoreToFront();
        return false;
    }
    return m_outside.prompts.askOkCancel(m_texts.Lms(u"ExitPopWarning"_s), m_mainWindow->windowTitle()) &&
           m_windows.closeAll();
}

bool Program::byebye(const QString &prompt)
{
    m_mainWindow->notTopmost();
    if (prompt.isEmpty() && !operatorEnds()) {
        return false;
    }
    if (!std::exchange(m_ended, true)) {
        m_popUp.close();
        m_mainWindow->prepareToEnd();
        m_endpoint.close();
        m_dispatcher.saveNow();
        m_log.WriteRunLog(m_texts.Lms(u"ExitSys"_s));
        m_outside.endProcess();
    }
    return true;
}

void Program::receive(const reception::Datagram &datagram)
{
    if (m_ended) {
        return;
    }
    m_mainWindow->showSource(datagram.sender);
    m_dispatcher.Winsock1_DataArrival(datagram);
}

void Program::setMainWindowNormal()
{
    m_mainWindow->setNormal();
}

void Program::showMainWindow()
{
    m_mainWindow->showForCall();
}

void Program::ShowCallerID_tarn(const core::CallRecord &record)
{
    m_mainWindow->ShowCallerID_tarn(record);
}

void Program::showEarlierCall(const core::CallRecord &record, int newerCalls)
{
    m_mainWindow->showEarlierCall(record, newerCalls);
}

void Program::showCallAgain(const core::CallRecord &shown, const core::CallRecord &now)
{
    m_mainWindow->showCallAgain(shown, now);
}

void Program::showLastCaller()
{
    m_mainWindow->showLastCaller();
    m_popUp.nextCall();
}

void Program::ShowPopup(const core::CallRecord &record)
{
    m_popUp.ShowPopup(record);
}

void Program::ShowSmallMessage(const QString &datagramText)
{
    if (const auto message = m_messages.ShowSmallMessage(datagramText)) {
        m_mainWindow->appendSms(message->entry);
        m_windows.showMessage(*message);
    }
}

// The sample call comes from the last unit, so that commands still go to that one.
void Program::handleSampleCall()
{
    const QHostAddress unit(m_settings.record.LastSenderIp.text());
    const QHostAddress sender = unit.isNull() ? QHostAddress(QHostAddress::LocalHost) : unit;
    receive({reception::sampleCallRecord(m_outside.clock.now()), sender, m_outside.port});
}

bool Program::eraseShortMessages()
{
    return m_messages.erase();
}

QString Program::describeLastDatagram()
{
    return m_dispatcher.describeLast() + u'\n' + m_areas.GetArea(m_values.LastCallerNumber);
}

mainwindow::LastCaller Program::lastCaller()
{
    const core::CallRecord &record = m_dispatcher.lastCall();
    return {.record = record, .text = reception::lastCallerText(record, m_areas.GetArea(record.CallerID))};
}

} // namespace app
