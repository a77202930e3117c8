#include "core/QtPrinter.h"

#include "core/ReportPages.h"

#include <QApplication>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace core {

// The preview is a window like any other: calls come in while it is open.
void QtPrinter::print(const PrintedReport &report)
{
    QWidget *window = QApplication::activeWindow();
    auto *preview = new QPrintPreviewDialog(window, Qt::Window); // deletes itself
    preview->setObjectName(u"printPreview"_s);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    preview->setWindowTitle(report.heading);
    preview->printer()->setDocName(report.heading);
    constexpr int margin = 15;
    preview->printer()->setPageMargins(QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter);
    QObject::connect(preview, &QPrintPreviewDialog::paintRequested, preview,
                     [report](QPrinter *printer) { drawPages(*printer, report); });
    preview->resize(preview->screen()->availableSize() * 3 / 4);
    preview->show();
}

} // namespace core
