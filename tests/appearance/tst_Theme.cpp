#include "appearance/theme/Theme.h"
#include "support/Test.h"

/// What the theme draws on each other can be told apart, light and dark.
class tst_Theme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextIsReadableOnItsGround()
    {
        using Roles = QPalette;
        QCOMPARE(appearance::contrast(Qt::black, Qt::white), 21.0);
        QVERIFY(std::abs(appearance::contrast(Qt::blue, Qt::red) - 2.15) < 0.01);
        for (const bool dark : {false, true}) {
            const QPalette palette = appearance::themePalette(dark);
            const auto readable = [dark](const QColor &text, const QColor &ground) {
                const double contrast = appearance::contrast(text, ground);
                QVERIFY2(contrast >= appearance::readableContrast,
                         qPrintable(u"%1 on %2: %3%4"_s.arg(text.name(), ground.name())
                                        .arg(contrast)
                                        .arg(dark ? u" dark"_s : QString())));
            };
            for (const auto &[text, ground] : {std::pair(Roles::WindowText, Roles::Window),
                                               {Roles::Text, Roles::Base},
                                               {Roles::Text, Roles::AlternateBase},
                                               {Roles::ButtonText, Roles::Button},
                                               {Roles::ToolTipText, Roles::ToolTipBase},
                                               {Roles::HighlightedText, Roles::Highlight},
                                               {Roles::PlaceholderText, Roles::Base},
                                               {Roles::PlaceholderText, Roles::AlternateBase},
                                               {Roles::PlaceholderText, Roles::Window},
                                               {Roles::Link, Roles::Base}}) {
                readable(palette.color(text), palette.color(ground));
            }
            const appearance::CallColors call = appearance::callColors(palette);
            for (const QColor &ground : {call.lastCallerBar, call.newCallBar}) {
                readable(call.lastCallerText, ground);
                readable(call.lastCallerDetails, ground);
            }
        }
    }
};

QTEST_MAIN(tst_Theme)
#include "tst_Theme.moc"
