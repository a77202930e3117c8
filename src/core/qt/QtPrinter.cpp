#include "core/qt/QtPrinter.h"

#include "core/qt/ReportPages.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace core {

namespace {

// A thousand pages take about a second, so calls are let in and shown between two pages. Keys and clicks have
// to wait: one of them might close the preview while it draws.
void drawWithCallsComingIn(QPrinter &printer, const PrintedReport &report)
{
    constexpr qint64 turn = 20;
    QElapsedTimer timer;
    timer.start();
    drawPages(printer, report, [&timer] {
        if (timer.elapsed() > turn) {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
            timer.restart();
        }
    });
}

} // namespace

// The preview is shown and not waited for, so that calls come in while it is open.
void QtPrinter::print(const PrintedReport &report, QWidget *askedBy)
{
    auto *preview = new QPrintPreviewDialog(askedBy, Qt::Window); // deletes itself
    preview->setObjectName(u"printPreview"_s);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    preview->setWindowTitle(report.heading);
    preview->printer()->setDocName(report.heading);
    constexpr int margin = 15;
    preview->printer()->setPageMargins(QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter);
    QObject::connect(preview, &QPrintPreviewDialog::paintRequested, preview,
                     [report](QPrinter *printer) { drawWithCallsComingIn(*printer, report); });
    preview->resize(preview->screen()->availableSize() * 3 / 4);
    preview->show();
}

} // namespace core
