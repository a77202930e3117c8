#pragma once

#include "core/Navigator.h"
#include "core/OpenForms.h"
#include "core/QtClock.h"
#include "core/QtPrompts.h"
#include "core/QtShell.h"
#include "notes/NoteContext.h"

#include <QTemporaryDir>

namespace bench {

/// A desk with 100,000 calls of 200,000 entries, 10,000 of them of one customer, and what its windows need.
class NoteDesk
{
public:
    static constexpr int calls = 100'000;

    NoteDesk();
    notes::NoteContext context();
    /// The customer with a twentieth of all entries.
    static QString busyCustomer();

    QTemporaryDir folder;
    core::Paths paths;
    core::QtClock clock;
    core::ProcessValues values;
    core::RunLog log{paths, clock, values};

private:
    struct Texts : core::TextLookup
    {
        QString Lms(const QString &key) const override { return key; }
    };
    struct NoWindows : core::Navigator
    {
        bool canShow(core::Window) const override { return false; }
        void show(core::Window) override {}
        void ShowHelp(const QString &) override {}
        void Show_Editor(const QString &, qint32) override {}
        void showPhoneBook(const QString &) override {}
        void showCustomerList(const QString &) override {}
        void addCustomer(const QString &, const QString &) override {}
        void ShowCustomerByName(const QString &) override {}
        void ShowNotePad(const QString &) override {}
        void addCaller(const QString &, const QString &) override {}
    };
    struct NoServer : core::Server
    {
        bool SendServer(const QString &) override { return true; }
    };
    struct NoPrinter : core::Printer
    {
        void print(const core::PrintedReport &) override {}
    };

    Texts m_texts;
    core::QtPrompts m_prompts;
    core::QtShell m_shell;
    NoWindows m_navigator;
    NoServer m_server;
    NoPrinter m_printer;
    core::OpenForms m_openForms{log};
    core::WindowMemory m_windows{paths, log};
    language::LanguageState m_language{QStringLiteral("ENG"), {}, {}, {}};
    language::FormTranslator m_translator{m_texts, m_language, log};
};

} // namespace bench
