#pragma once

#include "core/Printer.h"

class QPagedPaintDevice;

namespace core {

/// Draws a report on the pages of a printer or a PDF file: the heading on top of each, its number below. The
/// device must not be painted on already.
void drawPages(QPagedPaintDevice &device, const PrintedReport &report);

} // namespace core
