#include "app/Program.h"

#include "core/TextUtilities.h"
#include "core/platform.h"
#include "reception/SampleRecord.h"

#include <QApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace app {

Program::Program(const Outside &outside)
    : m_outside(outside), m_instance(outside.runtimeFolder),
      m_paths(core::pathsBelow(outside.startFolder, outside.dataFolder)), m_log(m_paths, outside.clock, m_values),
      m_settings(m_paths, m_log), m_windowMemory(m_paths, m_log), m_openForms(m_log),
      m_language(m_paths, m_log, outside.prompts, m_settings, outside.systemLanguageId),
      m_translator(m_language, m_language.state(), m_log), m_codePage(core::platform::ansiCodePage({})),
      m_numbers(m_paths, m_log), m_areas(m_log), m_messages(m_paths, m_log, outside.clock),
      m_dispatcher(m_settings, m_log, m_values, m_codePage, *this),
      m_endpoint({m_settings, m_log, outside.prompts, m_language, m_codePage}, outside.port,
                 [this](const reception::Datagram &datagram) { receive(datagram); }),
      m_popUp({m_log, m_settings, m_language, m_windows, {m_translator, m_openForms, m_windowMemory},
               [this]() -> const QWidget & { return *m_mainWindow; }})
{
}

Program::~Program() = default;

bool Program::subMain()
{
    if (!m_instance.tryToBeFirst()) {
        m_instance.callRunningToFront();
        m_outside.prompts.tell(u"App is runing!"_s);
        return false;
    }
    m_log.trap("subMain"_L1, [&] {
        iniPath();
        m_values.DeveloperMode = !core::FolderExists(m_outside.developerFolder).isEmpty();
        m_settings.Get_misc();
        m_windowMemory.load();
        m_language.iniLanguage();
        QApplication::setLayoutDirection(language::layoutDirection(m_language.state().code));
        m_codePage = core::CodePage(core::platform::ansiCodePage(m_language.state().code));
        nameProduct();
        m_autoHide.clear();
        iniVariants();
        loadNumberIndex();
        if (m_settings.record.gridColumnNames.isUnset()) {
            m_settings.SetDefaulteMisc_tarn();
        }
        showMainForm();
        openReception();
        maintainData();
    });
    return true;
}

void Program::iniPath()
{
    for (const QString &folder : {m_paths.DataFolder, m_paths.SmsFolder, m_paths.PopUserDataFolder}) {
        m_log.trap("iniPath"_L1, [&] { core::makeFolder(folder); });
    }
    m_values.CustomerDbExists = QFileInfo(m_paths.CustomerFile).isFile();
}

void Program::iniVariants()
{
    m_values.AppVersion = u"1.00C42"_s;
    m_values.MaxGridRows = 300;
    const QString &code = m_language.state().code;
    m_values.WordSeparator = core::MyIn(code, u"CHS"_s, u"CHT"_s) ? QString() : u" "_s;
}

// A coded name, which begins with "!", is shown as it stands: its decoder belongs to whoever brands a delivery.
void Program::nameProduct()
{
    m_values.OemMark =
        m_log.trap("ReadMdrOemMark"_L1, QString(), [&] { return core::ReadMdrOemMark(m_paths); });
    m_values.ProductDisplayName = m_language.Lms(m_values.OemMark);
    if (m_values.ProductDisplayName.trimmed().isEmpty()) {
        m_values.ProductDisplayName = m_values.OemMark;
    }
    if (m_values.ProductDisplayName.toUpper() == "NOTHING"_L1) {
        m_values.ProductDisplayName.clear();
    }
}

void Program::loadNumberIndex()
{
    if (m_values.CustomerDbExists) {
        m_numbers.LoadPhoneNumberSNArray();
        m_numbers.LoadCustomerPhoneNumberSnArray();
    }
}

void Program::showMainForm()
{
    m_mainWindow = std::make_unique<mainwindow::FrmMain>(mainwindow::FrmMain::Context{
        m_paths, m_values, m_log, m_settings, m_language, m_outside.prompts, m_windows, m_autoHide, *this,
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
    m_endpoint.iniUDP();
    if (!m_endpoint.isBound()) {
        m_mainWindow->showPortUnavailable();
    }
}

void Program::maintainData()
{
    store::FixCustomerData(m_log, m_paths, m_popUpTable);
    m_areaPath = areas::MakeAreaPath(m_log, m_paths.StartFolder);
    m_areas.load(m_areaPath);
    store::UpdateDatabase_Customer_0606191111(m_log, m_paths);
}

bool Program::byebye(const QString &prompt)
{
    if (prompt.isEmpty() && !m_outside.prompts.askOkCancel(m_language.Lms(u"ExitPopWarning"_s), {})) {
        return false;
    }
    if (!std::exchange(m_ended, true)) {
        m_popUp.close();
        m_mainWindow->prepareToEnd();
        m_endpoint.close();
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
    constexpr qint32 none = -1;
    const qint32 sn = m_numbers.FindCustomerSnOfCaller(callerNumber);
    const std::optional<QString> flag = sn == none ? std::nullopt : m_popUpTable.T3(sn);
    return flag && flag->trimmed() != "0"_L1;
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

void Program::showLastCaller(const QString &text)
{
    m_mainWindow->showLastCaller(text);
}

void Program::ShowPopup(const core::CallRecord &record)
{
    m_popUp.ShowPopup(record);
}

void Program::ShowSmallMessage(const QString &datagramText)
{
    if (const std::optional<QString> entry = m_messages.ShowSmallMessage(datagramText)) {
        m_mainWindow->appendSms(*entry);
    }
}

void Program::handleSampleCall()
{
    const QHostAddress ourselves(QHostAddress::LocalHost);
    receive({reception::sampleCallRecord(m_outside.clock.now()), ourselves, m_outside.port});
}

QString Program::describeLastDatagram()
{
    return m_dispatcher.describeLast() + u'\n' + GetArea(m_values.LastCallerNumber);
}

} // namespace app
