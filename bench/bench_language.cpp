// Translating the largest form, the customer's editor, in each language.

#include "CustomerDesk.h"
#include "Report.h"

#include "language/LanguagePack.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int forms = 21;

QWidget &editorOf(bench::CustomerDesk &desk)
{
    desk.windows.addCustomer({}, {});
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == "FrmEditCustomer"_L1 && window->isVisible()) {
            return *window;
        }
    }
    throw std::runtime_error("the editor did not open");
}

/// Milliseconds that a new editor, still in English, takes for fonts and texts of the language.
double msOfTranslation(bench::CustomerDesk &desk, const language::FormTranslator &translator)
{
    QWidget &form = editorOf(desk);
    QElapsedTimer time;
    time.start();
    translator.iniFormFonts(form);
    translator.iniFormLang(form);
    const double ms = double(time.nsecsElapsed()) / 1e6;
    form.close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return ms;
}

double medianMs(bench::CustomerDesk &desk, const core::Paths &delivered, const QString &code)
{
    core::Settings settings(delivered, desk.log);
    settings.record.LanguageSetting.setText(code);
    language::LanguagePack pack(delivered, desk.log, desk.doors, settings);
    pack.iniLanguage();
    const language::FormTranslator translator(pack, pack.state(), desk.log);
    std::vector<double> times(forms);
    std::generate(times.begin(), times.end(), [&] { return msOfTranslation(desk, translator); });
    std::sort(times.begin(), times.end());
    return times.at(forms / 2);
}

void makeDesk(const QString &folder)
{
    QProcess mkdesk;
    mkdesk.setStandardOutputFile(QProcess::nullDevice());
    mkdesk.start(QCoreApplication::applicationDirPath() + u"/calldesk-mkdesk"_s, {folder});
    if (!mkdesk.waitForFinished() || mkdesk.exitCode() != 0) {
        throw std::runtime_error("no desk can be made");
    }
}

bool measure()
{
    const QTemporaryDir folder;
    const core::Paths delivered = core::pathsBelow(folder.path(), folder.path());
    makeDesk(folder.path());
    bench::CustomerDesk desk(1);
    double longest = 0;
    for (const char *code :
         {"ENG", "CHS", "CHT", "SPN", "ARA", "FRN", "HBR", "TUK", "KOR", "POL", "PTG", "VN"}) {
        longest = std::max(longest, medianMs(desk, delivered, QLatin1String(code)));
    }
    return bench::print({.name = "translating the customer's editor, slowest language, ms",
                         .figure = longest,
                         .maxFigure = 5});
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    try {
        bench::printHeading();
        return measure() ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "bench_language: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
