#pragma once

#include "core/Printer.h"

#include <functional>

class QPagedPaintDevice;

namespace core {

/// Draws a report on the pages of a printer or a PDF file: the heading on top of each, its number below. The
/// device must not be painted on already. `afterPage` is called each time a page is full.
void drawPages(
    QPagedPaintDevice &device, const PrintedReport &report, const std::function<void()> &afterPage = [] {});

} // namespace core
