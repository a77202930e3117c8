#pragma once

#include "core/Printer.h"
#include "core/Prompts.h"
#include "core/Shell.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

/// The doors of a program that is measured: nobody sits in front of it. A box that no row expects ends the
/// benchmark, since its figures would be those of the box.
class Doors : public core::Prompts, public core::Shell, public core::Printer
{
public:
    QString expected;  ///< the one text that may be told
    QString namedFile; ///< the answer to the question for a file name
    QString opened;    ///< the file that was opened last

    using Prompts::askSave;
    void tell(const QString &text, const QString &, QWidget *) override
    {
        if (text != expected) {
            fail(text);
        }
    }
    bool askOkCancel(const QString &text, const QString &) override { fail(text); }
    Answer askSave(const QString &text, QWidget *, const SaveWords &) override { fail(text); }
    QString saveFileName(const QString &, const QString &) override { return namedFile; }
    QString openFileName(const QString &) override { return namedFile; }
    bool isOpen() const override { return false; }
    bool openPage(const QString &) override { return false; }
    bool startMail(const QString &) override { return false; }
    bool openFile(const QString &path) override
    {
        opened = path;
        return true;
    }
    bool editText(const QString &) override { return false; }
    void print(const core::PrintedReport &, QWidget *) override {}

private:
    [[noreturn]] static void fail(const QString &text)
    {
        std::fprintf(stderr, "the program asks: %s\n", qPrintable(text));
        std::exit(EXIT_FAILURE);
    }
};

} // namespace bench
