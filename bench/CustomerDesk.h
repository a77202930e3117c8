#pragma once

#include "customers/CustomerWindows.h"

#include "appearance/FormContext.h"
#include "core/QtClock.h"
#include "core/TextUtilities.h"
#include "lookup/NumberIndex.h"
#include "store/Upgrade.h"

#include <QTemporaryDir>

namespace bench {

/// Doors behind which nothing is: what is measured asks nobody and opens nothing.
class ClosedDoors : public core::Prompts,
                    public core::Shell,
                    public core::Navigator,
                    public core::Server,
                    public core::TextLookup
{
public:
    void tell(const QString &, const QString &) override {}
    bool askOkCancel(const QString &, const QString &) override { return false; }
    Answer askSave(const QString &) override { return Answer::Discard; }
    QString saveFileName(const QString &, const QString &) override { return {}; }
    bool isOpen() const override { return false; }
    bool openPage(const QString &) override { return false; }
    bool startMail(const QString &) override { return false; }
    bool openFile(const QString &) override { return false; }
    bool editText(const QString &) override { return false; }
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
    bool SendServer(const QString &) override { return true; }
    QString Lms(const QString &key) const override { return key; }
};

/// A desk with customers of five scripts, its number index and its windows; follows a save as the program
/// does.
class CustomerDesk : public customers::CustomerEffects
{
public:
    explicit CustomerDesk(int customers);

    void refreshCustomerList() override { windows.refreshCustomerList(); }
    void SendTDRData(const core::CustomerInfo &) override {}
    void customerSaved(qint32 sn, const QString &, const QString &) override
    {
        store::FixSavedCustomer(log, paths, popUpTable, sn);
        index.updateCustomer(sn);
    }
    void customerDeleted(qint32 sn) override { index.updateCustomer(sn); }

    QTemporaryDir folder;
    core::Paths paths = core::pathsBelow(folder.path(), folder.path());
    core::QtClock clock;
    core::ProcessValues values;
    core::RunLog log{paths, clock, values};
    ClosedDoors doors;
    core::OpenForms openForms{log};
    core::WindowMemory windowMemory{paths, log};
    language::LanguageState language{QStringLiteral("ENG"), {}, {}, {}};
    language::FormTranslator translator{doors, language, log};
    appearance::FormContext context{paths, values, log,   doors, clock,
                                    doors, doors,  doors, doors, {translator, openForms, windowMemory}};
    lookup::NumberIndex index{paths, log};
    store::CustomerPopUpTable popUpTable;
    lookup::ExistenceChecks checks{{paths, log, index, doors, doors, doors}};
    customers::CustomerWindows windows{{context, checks, *this}};
};

} // namespace bench
