#pragma once

#include "core/Clock.h"
#include "core/Navigator.h"
#include "core/Printer.h"
#include "core/Prompts.h"
#include "core/Server.h"
#include "core/Shell.h"
#include "core/TextLookup.h"
#include "support/Test.h"

#include <QSet>

namespace support {

/// A clock that stands until it is told to move.
struct FakeClock : core::Clock
{
    QDateTime time = QDateTime(QDate(2026, 11, 21), QTime(9, 30, 15));
    QDateTime now() const override { return time; }
};

/// Answers "[key]" for every key, so that a test sees both that a text was looked up and which.
struct KeyTexts : core::TextLookup
{
    QString Lms(const QString &key) const override { return u'[' + key + u']'; }
};

/// Answers from a script and records what was asked. A prompt that no test announced fails the test, and so
/// does an announced one that never came.
struct FakePrompts : core::Prompts
{
    FakePrompts() = default;
    ~FakePrompts() override
    {
        if (!m_script.isEmpty()) {
            QTest::qFail("an announced prompt never came", __FILE__, __LINE__);
        }
    }
    Q_DISABLE_COPY_MOVE(FakePrompts)

    /// Announces one prompt: its answer (for `tell` it is ignored) and what happens while it is open.
    void expect(bool ok = true, std::function<void()> whileOpen = {})
    {
        m_script.append({.ok = ok, .whileOpen = std::move(whileOpen)});
    }

    /// Announces a file dialog; empty: the operator cancels.
    void expectFile(const QString &path) { m_script.append({.path = path}); }
    /// Announces the question about typed text that was not saved.
    void expectSave(Answer choice) { m_script.append({.choice = choice}); }

    using core::Prompts::askSave;
    void tell(const QString &text, const QString &, QWidget *) override { answer(text); }
    bool askOkCancel(const QString &text, const QString &) override { return answer(text).ok; }
    Answer askSave(const QString &text, QWidget *, const SaveWords &) override { return answer(text).choice; }
    QString saveFileName(const QString &proposed, const QString &) override { return answer(proposed).path; }
    QString openFileName(const QString &filter) override { return answer(filter).path; }
    bool isOpen() const override { return m_open > 0; }

    QStringList asked; ///< the texts, in order
    /// Where a file is named, everything unannounced is agreed to, typed text dropped, and a file saved
    /// there.
    QString agreesToFile;

private:
    struct Scripted
    {
        bool ok = true;
        std::function<void()> whileOpen = {};
        QString path = {};
        Answer choice = Answer::Cancel;
    };
    Scripted answer(const QString &text)
    {
        asked.append(text);
        if (m_script.isEmpty() && !agreesToFile.isEmpty()) {
            return {.path = agreesToFile, .choice = Answer::Discard};
        }
        if (text.isEmpty() && m_script.value(0).path.isNull()) {
            QTest::qFail("a prompt without a text", __FILE__, __LINE__);
        }
        if (m_script.isEmpty()) {
            QTest::qFail(qPrintable(u"nobody announced this prompt: "_s + text), __FILE__, __LINE__);
            return {.ok = false};
        }
        Scripted scripted = m_script.takeFirst();
        ++m_open;
        if (scripted.whileOpen) {
            scripted.whileOpen();
        }
        --m_open;
        notifyClosed();
        return scripted;
    }

    QList<Scripted> m_script;
    int m_open = 0;
};

/// Records what the system was asked to open.
struct FakeShell : core::Shell
{
    QStringList opened; ///< one line a call, such as "openPage http://desk.example"

    bool openPage(const QString &address) override { return record("openPage", address); }
    bool startMail(const QString &address) override { return record("startMail", address); }
    bool openFile(const QString &path) override { return record("openFile", path); }
    bool editText(const QString &path) override { return record("editText", path); }

private:
    bool record(const char *what, const QString &with)
    {
        opened.append(QLatin1String(what) + u' ' + with);
        return true;
    }
};

/// Records the commands that were sent.
struct FakeServer : core::Server
{
    QStringList sent;
    bool reaches = true;
    bool SendServer(const QString &text) override
    {
        sent.append(text);
        return reaches;
    }
};

/// Keeps what was printed.
struct FakePrinter : core::Printer
{
    QList<core::PrintedReport> printed;
    void print(const core::PrintedReport &report, QWidget *) override { printed.append(report); }
};

/// Records which windows were asked for; shows none.
struct FakeNavigator : core::Navigator
{
    QSet<core::Window> available; ///< what canShow answers
    QStringList shown;            ///< one line a call, such as "Show_Editor CUSTOMER 7"
    /// What comes to pass while a caller's window opens, and whether it does.
    std::function<bool()> opens = [] { return true; };

    bool canShow(core::Window window) const override { return available.contains(window); }
    void show(core::Window window) override { record({"show"_L1, QString::number(int(window))}); }
    void ShowHelp(const QString &helpId) override { record({"ShowHelp"_L1, helpId}); }
    void addCustomer(const QString &tel, const QString &key, const QString &name) override
    {
        record({"addCustomer"_L1, tel, key, name});
    }
    void ShowCustomerByName(const QString &name) override { record({"ShowCustomerByName"_L1, name}); }
    void ShowNotePad(const QString &customerName) override { record({"ShowNotePad"_L1, customerName}); }
    bool addNote(qint32 customerSn) override
    {
        record({"addNote"_L1, QString::number(customerSn)});
        return opens();
    }
    void showPhoneBook(const QString &query, QWidget *) override { record({"showPhoneBook"_L1, query}); }
    void showCustomerList(const QString &query, QWidget *) override
    {
        record({"showCustomerList"_L1, query});
    }
    void addCaller(const QString &tel, const QString &key) override { record({"addCaller"_L1, tel, key}); }
    bool Show_Editor(core::RowKey caller) override
    {
        record({"Show_Editor"_L1, core::sourceOf(caller.table), QString::number(caller.sn)});
        return opens();
    }

private:
    void record(const QStringList &call) { shown.append(call.join(u' ')); }
};

} // namespace support
