#include "core/qt/ReportPages.h"

#include <QFontDatabase>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QSet>
#include <QTextLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace core {

namespace {

constexpr qreal pointSize = 9;
constexpr qreal smallestPointSize = 6;

// The width of the widest rule, a line that repeats one character, that is not wider than the limit.
qreal widestRule(const QStringList &lines, const QFontMetricsF &metrics, qreal limit)
{
    QSet<QString> rules; // a long report has the same one thousands of times, and measuring takes its time
    for (const QString &line : lines) {
        if (!line.isEmpty() && line.count(line.front()) == line.size()) {
            rules.insert(line);
        }
    }
    qreal widest = 0;
    for (const QString &rule : std::as_const(rules)) {
        const qreal wide = metrics.horizontalAdvance(rule);
        widest = wide <= limit ? std::max(widest, wide) : widest;
    }
    return widest;
}

// The font is made small enough that no rule runs over into a second line, as it does with the wide fonts of
// some systems.
QFont reportFont(const PrintedReport &report, const QStringList &lines, QPagedPaintDevice &device, int width)
{
    const auto installed = std::ranges::find_if(
        report.families, [](const QString &each) { return QFontDatabase::hasFamily(each); });
    QFont font = installed != report.families.end() ? QFont(*installed) : QFont();
    constexpr int pointsAnInch = 72;
    font.setPixelSize(qRound(pointSize * device.logicalDpiY() / pointsAnInch)); // whatever the screen has
    const qreal limit = width * pointSize / smallestPointSize;
    const qreal rule = widestRule(lines, QFontMetricsF(font, &device), limit);
    if (rule > width) {
        font.setPixelSize(int(font.pixelSize() * width / rule));
    }
    return font;
}

// Goes down the pages line by line.
class Pages
{
public:
    Pages(QPagedPaintDevice &device, const PrintedReport &report, const QStringList &lines,
          const std::function<void()> &afterPage)
        : m_device(device), m_painter(&device), m_report(report), m_afterPage(afterPage),
          m_size(device.pageLayout().paintRectPixels(device.logicalDpiX()).size()),
          m_font(reportFont(report, lines, device, m_size.width()))
    {
        m_painter.setFont(m_font);
        m_lineHeight = m_painter.fontMetrics().lineSpacing();
        beginPage();
    }

    void draw(const QString &line)
    {
        QTextLayout layout(line, m_font, &m_device);
        QTextOption option(m_report.rightToLeft ? Qt::AlignRight : Qt::AlignLeft);
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        option.setTextDirection(m_report.rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine part = layout.createLine(); part.isValid(); part = layout.createLine()) {
            part.setLineWidth(m_size.width());
            const qreal top = takeLine(std::max(m_lineHeight, qCeil(part.height())));
            part.draw(&m_painter, QPointF(0, top - part.y()));
        }
        layout.endLayout();
    }

private:
    void beginPage()
    {
        ++m_page;
        const QRect top(0, 0, m_size.width(), m_lineHeight);
        const QRect bottom(0, m_size.height() - m_lineHeight, m_size.width(), m_lineHeight);
        m_painter.drawText(top, Qt::AlignHCenter, m_report.heading);
        m_painter.drawText(bottom, Qt::AlignHCenter, QString::number(m_page));
        m_top = 2 * m_lineHeight;
    }
    // The place of the next line. Lines in some scripts are higher than others.
    int takeLine(int height)
    {
        if (m_top + height > m_size.height() - 2 * m_lineHeight) {
            m_afterPage();
            m_device.newPage();
            beginPage();
        }
        return std::exchange(m_top, m_top + height);
    }

    QPagedPaintDevice &m_device;
    QPainter m_painter;
    const PrintedReport &m_report;
    const std::function<void()> &m_afterPage;
    QSize m_size;
    QFont m_font;
    int m_lineHeight = 0;
    int m_top = 0;
    int m_page = 0;
};

} // namespace

void drawPages(QPagedPaintDevice &device, const PrintedReport &report, const std::function<void()> &afterPage)
{
    QStringList lines = report.text.split(u'\n');
    if (lines.last().isEmpty()) {
        lines.removeLast(); // behind the last line's end
    }
    for (QString &line : lines) {
        if (line.endsWith(u'\r')) {
            line.chop(1);
        }
    }
    Pages pages(device, report, lines, afterPage);
    for (const QString &line : std::as_const(lines)) {
        pages.draw(line);
    }
}

} // namespace core
