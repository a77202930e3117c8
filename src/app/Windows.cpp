#include "app/Windows.h"

#include <QApplication>
#include <QFileInfo>
#include <QPointer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace app {

namespace {

// The icon in the tray is a window, too, one that bypasses the window manager. If it were closed, it would
// not come back.
bool isForm(const QWidget &window)
{
    return !window.windowFlags().testFlag(Qt::BypassWindowManagerHint);
}

} // namespace

Windows::Windows(const Context &context)
    : m_context(context), m_forms{.paths = context.paths,
                                  .values = context.values,
                                  .log = context.log,
                                  .texts = context.texts,
                                  .clock = context.outside.clock,
                                  .prompts = context.outside.prompts,
                                  .shell = context.outside.shell,
                                  .navigator = *this,
                                  .server = context.endpoint,
                                  .services = context.services},
      m_checks({.paths = context.paths,
                .log = context.log,
                .index = context.callers.numbers(),
                .texts = context.texts,
                .prompts = context.outside.prompts,
                .navigator = *this}),
      m_phoneBook({.forms = m_forms,
                   .checks = m_checks,
                   .entrySaved = [this](const phonebook::PhoneBookEntry &entry) { entrySaved(entry); }}),
      m_customers({.forms = m_forms, .checks = m_checks, .effects = *this}),
      m_imports(
          {.forms = m_forms,
           .codePage = context.codePage,
           .copyDesk = [this](const std::function<bool()> &ended) { copyBeforeImport(ended); },
           .customersImported = [this](const imports::ImportReport &report) { customersImported(report); },
           .entriesImported = [this](const imports::ImportReport &) { entriesImported(); }}),
      m_notes({.forms = m_forms, .printer = context.outside.printer, .language = context.language}),
      m_messages({.forms = m_forms,
                  .codePage = context.codePage,
                  .unreadChanged = [this](int count) { m_context.mainWindow().showUnread(count); }}),
      m_options({.forms = m_forms, .settings = context.settings, .effects = *this}),
      m_help({.forms = m_forms, .language = context.language}),
      m_copies({.forms = m_forms, .keeper = context.copies, .lookInto = [this](const copies::Copy &copy) {
                    showCustomersOf(copy);
                }})
{}

// Asked once, when the main window comes up: a window that needs one of the desk's files is offered only with
// that file.
bool Windows::canShow(core::Window window) const
{
    switch (window) {
    case core::Window::CallNotes:
    case core::Window::CustomerList:
        return m_context.values.CustomerDbExists;
    case core::Window::PhoneBook:
        return QFileInfo::exists(m_context.paths.PhoneBookFile);
    default:
        return true;
    }
}

void Windows::show(core::Window window)
{
    switch (window) {
    case core::Window::CallNotes:
        return m_notes.showManager();
    case core::Window::CustomerList:
        return m_customers.showList();
    case core::Window::PhoneBook:
        return m_phoneBook.showList();
    case core::Window::Options:
        return m_options.showOptions();
    case core::Window::SendMessage:
        return m_messages.showSend();
    case core::Window::Copies:
        return m_copies.showCopies();
    case core::Window::ImportCustomers:
        return m_imports.showCustomers();
    case core::Window::ImportPhoneBook:
        return m_imports.showPhoneBook();
    }
}

void Windows::showCustomersOf(const copies::Copy &copy)
{
    const QString file = QFileInfo(m_context.paths.CustomerFile).fileName();
    m_customers.showCopied(copy.path(file), copies::shownTime(copy));
}

void Windows::deskRestored()
{
    customersImported({});
    entriesImported();
    m_notes.followNames({}); // another day's
}

void Windows::ShowHelp(const QString &helpId)
{
    m_help.ShowHelp(helpId);
}

bool Windows::Show_Editor(core::RowKey caller)
{
    return caller.table == core::RowKey::Table::Customer ? m_customers.editCustomer(caller.sn)
                                                         : m_phoneBook.editEntry(caller.sn);
}

void Windows::addCaller(const QString &number, const QString &keyWord)
{
    m_phoneBook.addCaller(number, keyWord);
}

void Windows::addCustomer(const QString &number, const QString &keyWord, const QString &name)
{
    m_customers.addCustomer(number, keyWord, name);
}

void Windows::ShowCustomerByName(const QString &name)
{
    m_customers.ShowCustomerByName(name);
}

void Windows::ShowNotePad(const QString &customerName)
{
    m_notes.ShowNotePad(customerName, 0);
}

bool Windows::addNote(qint32 customerSn)
{
    const QString name = m_context.callers.customerName(customerSn);
    if (name.isEmpty()) { // another desk has deleted him
        m_context.outside.prompts.tell(m_forms.texts.Lms(u"CustomerNotFound"_s), {});
        return false;
    }
    return m_notes.ShowNotePad(name, 1);
}

void Windows::showPhoneBook(const QString &query, QWidget *editor)
{
    m_phoneBook.showList(query, editor);
}

void Windows::showCustomerList(const QString &query, QWidget *editor)
{
    m_customers.showList(query, editor);
}

bool Windows::closeAll()
{
    const QWidgetList all = QApplication::topLevelWidgets();
    const QList<QPointer<QWidget>> windows(all.begin(), all.end()); // a tip may end while a question is open
    const bool closed = std::all_of(windows.begin(), windows.end(), [this](QWidget *window) {
        return window == nullptr || window == &m_context.mainWindow() || !window->isVisible() ||
               !isForm(*window) || window->close();
    });
    return closed && m_messages.mayDropDraft();
}

void Windows::refreshCustomerList()
{
    m_customers.refreshCustomerList();
}

void Windows::SendTDRData(const core::CustomerInfo &info)
{
    m_context.forwarding.SendTDRData(info);
}

// What is known of him comes first: while a box tells of the notes, another desk may save him, too, and that
// is then read again.
void Windows::customerSaved(qint32 sn, const QString &oldName, const lookup::CustomerFacts &onFile)
{
    m_context.callers.customerSaved(sn, onFile);
    if (!oldName.isEmpty() && oldName != onFile.name) {
        renameNotes(oldName, onFile.name);
        m_context.callerRenamed({.table = core::RowKey::Table::Customer, .sn = sn}, onFile.name);
    }
}

void Windows::entrySaved(const phonebook::PhoneBookEntry &entry)
{
    m_context.callers.entrySaved(*entry.SN, entry.Telno);
    m_context.callerRenamed({.table = core::RowKey::Table::PhoneBook, .sn = *entry.SN}, entry.simpledes);
}

// Another thread has written them, so the directory finds them as it finds what another desk has saved.
// On the import's thread. Where another desk, or this one, makes a copy at the time, that one is as good.
void Windows::copyBeforeImport(const std::function<bool()> &ended) const
{
    try {
        const copies::CopyFolder folder(m_forms.paths, ended);
        folder.make(m_context.outside.clock.now(), copies::Reason::BeforeImport);
    } catch (const copies::MadeElsewhere &) {
    } catch (const copies::CopyFolder::Ended &) {
    }
}

void Windows::customersImported(const imports::ImportReport &report)
{
    m_context.callers.look();
    m_customers.refreshCustomerList();
    if (!report.renamed.isEmpty()) {
        m_notes.followNames(report.renamed);
    }
    m_forms.server.SendServer(u"REFRESHCUSTOMERLIST"_s);
}

void Windows::entriesImported()
{
    m_context.callers.entriesImported();
    m_phoneBook.entriesImported();
    m_forms.server.SendServer(u"REFRESHSIMPLEPHONEBOOK"_s);
}

void Windows::renameNotes(const QString &oldName, const QString &newName)
{
    if (!m_notes.RefreshNotePad(oldName, newName)) {
        m_context.outside.prompts.tell(m_forms.texts.Lms(u"NotesUnderOldName"_s), {});
    }
}

void Windows::customerDeleted(qint32 sn)
{
    m_context.callers.customerDeleted(sn);
}

QString Windows::iniUDP()
{
    QString trouble = m_context.endpoint.iniUDP();
    m_context.mainWindow().showPortAvailable(m_context.endpoint.isBound());
    return trouble;
}

QStringList Windows::gridColumnNames() const
{
    QStringList names;
    for (const mainwindow::GridColumn &column : m_context.mainWindow().calls().columns()) {
        names.append(column.name);
    }
    return names;
}

QStringList Windows::hiddenGridColumns() const
{
    QStringList names;
    for (const mainwindow::GridColumn &column : m_context.mainWindow().calls().columns()) {
        if (!column.visible) {
            names.append(column.name);
        }
    }
    return names;
}

// Each column keeps its width and visibility; only the order changes.
bool Windows::ChangeGridCfg(const QStringList &names)
{
    mainwindow::CallGridModel &calls = m_context.mainWindow().calls();
    QList<mainwindow::GridColumn> columns = calls.columns();
    std::sort(columns.begin(), columns.end(), [&](const auto &left, const auto &right) {
        return names.indexOf(left.name) < names.indexOf(right.name);
    });
    return calls.ChangeGridCfg(columns);
}

void Windows::iniGridCallerID_tarn()
{
    m_context.mainWindow().calls().iniGridCallerID_tarn();
}

} // namespace app
