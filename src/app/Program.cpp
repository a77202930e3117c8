#include "app/Program.h"

#include "conversion/DeskConversion.h"
#include "core/ProductName.h"
#include "core/TextUtilities.h"
#include "core/platform.h"
#include "lookup/PopUpFilter.h"
#include "reception/SampleRecord.h"
#include "store/Database.h"

#include <QApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace app {

Program::Program(const Outside &outside)
    : m_outside(outside), m_instance(outside.runtimeFolder),
      m_paths(core::pathsBelow(outside.startFolder, outside.dataFolder)),
      m_log(m_paths, outside.clock, m_values), m_settings(m_paths, m_log), m_windowMemory(m_paths, m_log),
      m_openForms(m_log), m_language(m_paths, m_log, outside.prompts, m_settings, outside.systemLanguageId),
      m_toolkitTexts(m_language), m_translator(m_language, m_language.state(), m_log),
      m_codePage(core::platform::ansiCodePage({})), m_numbers(m_paths, m_log), m_areas(m_log),
      m_messages(m_paths, m_log, outside.clock), m_dispatcher(m_settings, m_log, m_values, m_codePage, *this),
      m_endpoint({m_settings, m_log, outside.prompts, m_language, m_codePage}, outside.port,
                 [this](const reception::Datagram &datagram) { receive(datagram); }),
      m_forwarding({m_settings, m_log, m_codePage}),
      m_windows({m_outside,
                 m_paths,
                 m_values,
                 m_log,
                 m_settings,
                 m_language,
                 m_codePage,
                 m_numbers,
                 m_popUpTable,
                 m_endpoint,
                 m_forwarding,
                 {m_translator, m_openForms, m_windowMemory},
                 [this]() -> mainwindow::FrmMain & { return *m_mainWindow; },
                 [this](bool known) { followNumbers(known); }}),
      m_popUp({m_log,
               m_settings,
               m_language,
               m_windows,
               {m_translator, m_openForms, m_windowMemory},
               [this]() -> const QWidget & { return *m_mainWindow; }})
{
    const auto connectTimer = [this](const QTimer &timer, void (Program::*handler)()) {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this, handler] { (this->*handler)(); });
    };
    connectTimer(m_numbersLoading, &Program::loadMoreNumbers);
    connectTimer(m_databasesRetry, &Program::retryDatabases);
}

// A window that was closed just now is deleted while all that it uses is there.
Program::~Program()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_outside.prompts.setTexts(nullptr);
    m_outside.prompts.setClosedHandler({});
}

// A step that fails is logged, and the next one is taken.
bool Program::subMain()
{
    if (!becomeFirst()) {
        return false;
    }
    using Step = void (Program::*)();
    constexpr Step steps[] = {&Program::iniPath,         &Program::readSettings, &Program::chooseLanguage,
                              &Program::nameProduct,     &Program::iniVariants,  &Program::loadNumberIndex,
                              &Program::setGridDefaults, &Program::showMainForm, &Program::openReception,
                              &Program::maintainData};
    for (const Step step : steps) {
        const bool done = m_log.trap("subMain"_L1, [&] { (this->*step)(); });
        if (!done && step == &Program::showMainForm) {
            return false;
        }
    }
    return true;
}

// Where the lock cannot be used at all, starting twice is the lesser evil.
bool Program::becomeFirst()
{
    if (m_log.trap("SingleInstance"_L1, true, [&] { return m_instance.tryToBeFirst(); })) {
        return true;
    }
    m_instance.callRunningToFront();
    m_outside.prompts.tell(u"App is runing!"_s);
    return false;
}

void Program::iniPath()
{
    for (const QString &folder : {m_paths.DataFolder, m_paths.SmsFolder, m_paths.PopUserDataFolder}) {
        m_log.trap("iniPath"_L1, [&] { core::makeFolder(folder); });
    }
    m_log.trap("completeConversion"_L1, [&] {
        if (conversion::completeConversion(m_paths.StartFolder)) {
            m_log.WriteRunLog(u"The conversion of the old databases is completed."_s);
        }
    });
    m_values.CustomerDbExists = QFileInfo(m_paths.CustomerFile).isFile();
}

void Program::readSettings()
{
    m_values.DeveloperMode = !core::FolderExists(m_outside.developerFolder).isEmpty();
    m_settings.Get_misc();
    m_windowMemory.load();
}

void Program::chooseLanguage()
{
    m_language.iniLanguage();
    m_outside.prompts.setTexts(&m_language);
    const QString &code = m_language.state().code;
    m_toolkitTexts.install(code);
    QApplication::setLayoutDirection(language::layoutDirection(code));
    m_codePage = core::CodePage(core::platform::ansiCodePage(code));
}

void Program::nameProduct()
{
    m_values.OemMark =
        m_log.trap("ReadMdrOemMark"_L1, QString(), [&] { return core::ReadMdrOemMark(m_paths); });
    m_values.ProductDisplayName = core::productName(m_values.OemMark, m_language);
    m_autoHide.clear();
}

void Program::iniVariants()
{
    m_log.trap("iniVariants"_L1, [&] {
        m_values.AppVersion = u"1.00C42"_s;
        m_values.MaxGridRows = 300;
        const QString &code = m_language.state().code;
        m_values.WordSeparator = core::MyIn(code, u"CHS"_s, u"CHT"_s) ? QString() : u" "_s;
    });
}

void Program::loadNumberIndex()
{
    if (m_values.CustomerDbExists) {
        m_databasesLocked = databasesLocked();
        const bool phoneBook = m_numbers.LoadPhoneNumberSNArray();
        m_numbersLoaded = m_numbers.LoadCustomerPhoneNumberSnArray() && phoneBook;
    }
}

void Program::loadMoreNumbers()
{
    if (!m_numbers.continueLoading() && databasesLocked()) {
        retryLater();
    }
    awaitNumbers();
}

// The numbers of a large desk are read on in pieces while the window already stands. Calls wait for the last
// one.
void Program::awaitNumbers()
{
    m_endpoint.hold(m_numbers.isLoading());
    if (m_numbers.isLoading()) {
        m_numbersLoading.start(std::chrono::milliseconds(1));
    } else {
        m_numbersLoading.stop();
    }
}

// Another desk may have taken a file to itself just after the customer was saved.
void Program::followNumbers(bool known)
{
    awaitNumbers();
    if (!known) {
        retryLater();
    }
}

bool Program::databasesLocked() const
{
    return store::isLocked(m_paths.CustomerFile) || store::isLocked(m_paths.PhoneBookFile);
}

void Program::setGridDefaults()
{
    if (m_settings.record.gridColumnNames.isUnset()) {
        m_settings.SetDefaulteMisc_tarn();
    }
}

void Program::showMainForm()
{
    m_mainWindow = std::make_unique<mainwindow::FrmMain>(
        mainwindow::FrmMain::Context{m_paths,
                                     m_values,
                                     m_log,
                                     m_settings,
                                     m_language,
                                     m_outside.prompts,
                                     m_windows,
                                     m_autoHide,
                                     *this,
                                     {m_translator, m_openForms, m_windowMemory}});
    m_mainWindow->show();
    paintAtOnce();
    m_instance.onSecondInstance([this] { m_mainWindow->restoreToFront(); });
}

// The operator sees the window before the databases are looked after, which takes its time on a large desk.
// Nothing can come in meanwhile but the window system's own events.
void Program::paintAtOnce()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
}

void Program::openReception()
{
    m_windows.iniUDP();
    m_forwarding.Ini_TDR_UDP();
}

void Program::maintainData()
{
    const bool fixed = store::FixCustomerData(m_log, m_paths, m_popUpTable) == 1;
    m_areaPath = areas::MakeAreaPath(m_log, m_paths.StartFolder);
    m_areas.load(m_areaPath);
    store::UpdateDatabase_Customer_0606191111(m_log, m_paths);
    awaitNumbers();
    const bool failed = m_values.CustomerDbExists && !(m_numbersLoaded && fixed);
    if (failed && (m_databasesLocked || databasesLocked())) {
        retryLater();
    }
}

void Program::retryLater()
{
    constexpr std::chrono::seconds pause{2};
    m_mainWindow->showCustomersAvailable(false);
    m_databasesRetry.start(pause);
}

// Another desk had a file to itself when the program started. Asking first keeps the log and the window quiet
// for as long as it has.
void Program::retryDatabases()
{
    if (databasesLocked()) {
        return;
    }
    loadNumberIndex();
    awaitNumbers();
    const bool fixed = store::FixCustomerData(m_log, m_paths, m_popUpTable) == 1;
    store::UpdateDatabase_Customer_0606191111(m_log, m_paths);
    const bool lockedAgain = !(m_numbersLoaded && fixed) && databasesLocked();
    if (!lockedAgain) {
        m_databasesRetry.stop();
        m_mainWindow->showCustomersAvailable(true);
    }
}

// The tray's menu works while a message box, or the dialog of the printer, is open. Closing windows under
// that box would leave it, and whoever waits for its answer, without ground: the answer comes first.
bool Program::operatorEnds()
{
    if (m_outside.prompts.isOpen() || QApplication::activeModalWidget() != nullptr) {
        m_mainWindow->restoreToFront();
        return false;
    }
    return m_outside.prompts.askOkCancel(m_language.Lms(u"ExitPopWarning"_s), m_mainWindow->windowTitle()) &&
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
        m_log.WriteRunLog(m_language.Lms(u"ExitSys"_s));
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

bool Program::callerPopsUp(const QString &callerNumber)
{
    return lookup::callerPopsUp(m_numbers, m_popUpTable, callerNumber);
}

QString Program::GetArea(const QString &callerNumber)
{
    return m_areas.GetArea(callerNumber);
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

void Program::showLastCaller(const core::CallRecord &record, const QString &text)
{
    m_mainWindow->showLastCaller(record, text);
}

void Program::ShowPopup(const core::CallRecord &record)
{
    m_popUp.ShowPopup(record);
}

void Program::ShowSmallMessage(const QString &datagramText)
{
    if (const auto message = m_messages.ShowSmallMessage(datagramText)) {
        m_mainWindow->appendSms(message->entry);
        m_windows.showMessage(message->text);
    }
}

// In the name of the last unit, which stays the one to be answered.
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
    return m_dispatcher.describeLast() + u'\n' + GetArea(m_values.LastCallerNumber);
}

} // namespace app
