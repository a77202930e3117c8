#pragma once

#include "core/Printer.h"

namespace core {

/// Qt's print preview, which knows all printers of the system.
class QtPrinter : public Printer
{
public:
    void print(const PrintedReport &report, QWidget *askedBy) override;
};

} // namespace core
