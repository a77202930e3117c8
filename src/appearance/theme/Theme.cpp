#include "appearance/theme/Theme.h"

#include "appearance/theme/ThemedIcons.h"

#include <QLineEdit>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QWidget>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace appearance {

namespace {

struct Shades
{
    QRgb window, base, alternate, text, muted, button, line, accent, accentText, link;
};

constexpr Shades lightShades = {0xfff3f5f8, 0xffffffff, 0xfff6f8fb, 0xff1c2530, 0xff606c80,
                                0xfffbfcfd, 0xffc9d1dc, 0xff1f5fbf, 0xffffffff, 0xff1f5fbf};
constexpr Shades darkShades = {0xff2b3139, 0xff1c2127, 0xff22282f, 0xffe5eaf1, 0xffa3afc0,
                               0xff333a43, 0xff11151a, 0xff3574d6, 0xffffffff, 0xff7fb0ff};

// A line under a letter would part it from its neighbours in a script whose letters join.
bool joinsLetters(const QString &text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar letter) { return letter.script() == QChar::Script_Arabic; });
}

// Fusion with room around the texts of tables, lists and buttons, and with our own icons in message boxes.
class RoomyStyle : public QProxyStyle
{
public:
    RoomyStyle() : QProxyStyle(QStyleFactory::create(u"Fusion"_s)) {}

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        constexpr int cellMargin = 7;
        return metric == PM_HeaderMargin || metric == PM_FocusFrameHMargin
                   ? cellMargin
                   : QProxyStyle::pixelMetric(metric, option, widget);
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        const auto *edit = qobject_cast<const QLineEdit *>(widget);
        const bool onlyShows = edit != nullptr && edit->isReadOnly() && !edit->hasFrame();
        if (element != PE_PanelLineEdit || !onlyShows) { // a result looks like no box to type into
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override
    {
        constexpr int buttonPadding = 24;
        constexpr int itemPadding = 6;
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_PushButton) {
            size.setWidth(std::max(size.width(), contents.width() + buttonPadding));
        } else if (type == CT_ItemViewItem) {
            size.rheight() += itemPadding;
        }
        return size;
    }
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        const bool unmarked = hint == SH_UnderlineShortcut && widget != nullptr &&
                              joinsLetters(widget->property("text").toString());
        return unmarked || hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }
    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option, const QWidget *widget) const override
    {
        const QColor accent = QApplication::palette().color(QPalette::Highlight);
        switch (icon) {
        case SP_MessageBoxQuestion:
            return themedIcon(u"help", accent);
        case SP_MessageBoxInformation:
            return themedIcon(u"info", accent);
        default:
            return QProxyStyle::standardIcon(icon, option, widget);
        }
    }
};

} // namespace

QPalette themePalette(bool dark)
{
    const Shades &shades = dark ? darkShades : lightShades;
    QPalette palette{QColor(shades.button), QColor(shades.window)};
    palette.setColor(QPalette::WindowText, shades.text);
    palette.setColor(QPalette::Base, shades.base);
    palette.setColor(QPalette::AlternateBase, shades.alternate);
    palette.setColor(QPalette::Text, shades.text);
    palette.setColor(QPalette::ButtonText, shades.text);
    palette.setColor(QPalette::ToolTipBase, shades.base);
    palette.setColor(QPalette::ToolTipText, shades.text);
    palette.setColor(QPalette::PlaceholderText, shades.muted);
    palette.setColor(QPalette::Mid, shades.line);
    palette.setColor(QPalette::Highlight, shades.accent);
    palette.setColor(QPalette::HighlightedText, shades.accentText);
    palette.setColor(QPalette::Link, shades.link);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, shades.muted);
    }
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(shades.accent));
    return palette;
}

void applyTheme(QApplication &application, bool dark)
{
    QApplication::setStyle(new RoomyStyle); // the application takes it over
    application.setPalette(themePalette(dark));
}

CallColors callColors(const QPalette &palette)
{
    return isDark(palette) ? CallColors{0xff4a3f12, 0xff6b5300, 0xfffff3c4, 0xffe3d28c}
                           : CallColors{0xfffff1b8, 0xffffd23f, 0xff2b2408, 0xff5f4f10};
}

namespace {

// The light that the eye gets from a colour, 0 to 1, by the formula of the accessibility guidelines (WCAG).
double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

} // namespace appearance
