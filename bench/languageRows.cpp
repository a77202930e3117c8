// Translating the largest window, the customer's editor, in each language.

#include "Measure.h"
#include "Rows.h"

#include "core/RunLog.h"
#include "core/Settings.h"
#include "language/LanguagePack.h"
#include "language/forms/FormTranslator.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr auto editorName = "FrmEditCustomer"_L1;

/// Fonts and texts of a new editor, which stands in English, and opening it until painted.
Sample translating(Station &station, const language::FormTranslator &translator)
{
    Sample sample;
    sample.floor = msOf([&] {
        station.program.windows().addCustomer({}, {}, {});
        shownWindow(editorName).grab();
    });
    sample.figure = msOf([&] {
        translator.iniFormFonts(shownWindow(editorName));
        translator.iniFormLang(shownWindow(editorName));
    });
    closeWindow(editorName);
    return sample;
}

Sample slowestLanguage(Station &station)
{
    const core::Paths &paths = station.desk.paths();
    const core::QtClock clock;
    const core::ProcessValues values;
    core::RunLog log(paths, clock, values);
    core::Settings settings(paths, log);
    return worst(language::languages(), [&](const language::Language &language) {
        settings.record.LanguageSetting.setText(language.code);
        language::LanguagePack pack(paths, log, station.program.doors, settings);
        pack.iniLanguage();
        const language::FormTranslator translator(pack, pack.state(), log);
        return least(9, [&] { return translating(station, translator); });
    });
}

} // namespace

Rows languageRows(Stations &stations)
{
    return {{"translating the customer's editor, the slowest language, to opening it, ms",
             {.times = 0.4},
             [&stations] { return slowestLanguage(stations.of(smallDesk)); }}};
}

} // namespace bench
