#pragma once

#include "core/Navigator.h"
#include "core/Printer.h"
#include "core/Prompts.h"
#include "core/Server.h"
#include "core/Shell.h"
#include "core/TextLookup.h"

namespace bench {

/// Doors behind which nothing is: what is measured asks nobody and opens nothing.
class ClosedDoors : public core::Prompts,
                    public core::Shell,
                    public core::Navigator,
                    public core::Server,
                    public core::Printer,
                    public core::TextLookup
{
public:
    void tell(const QString &, const QString &, QWidget *) override {}
    bool askOkCancel(const QString &, const QString &) override { return false; }
    Answer askSave(const QString &, QWidget *, const SaveWords &) override { return Answer::Discard; }
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
    void showPhoneBook(const QString &, QWidget *) override {}
    void showCustomerList(const QString &, QWidget *) override {}
    void addCustomer(const QString &, const QString &) override {}
    void ShowCustomerByName(const QString &) override {}
    void ShowNotePad(const QString &) override {}
    void addCaller(const QString &, const QString &) override {}
    void print(const core::PrintedReport &, QWidget *) override {}
    bool SendServer(const QString &) override { return true; }
    QString Lms(const QString &key) const override { return key; }
};

} // namespace bench
