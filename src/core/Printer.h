#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace core {

/// A plain text for paper.
struct PrintedReport
{
    QString heading;      ///< stands on top of each page
    QString text;         ///< one print line per line; what is wider than the page goes on in the next one
    QStringList families; ///< fonts to take the first installed one of; empty: the desktop's
    bool rightToLeft = false;
};

/// The door to the system's printers.
class Printer
{
public:
    virtual ~Printer() = default;
    /// Shows the pages first, in a window that goes with the one that asked for them; from there the operator
    /// prints them, also into a PDF file, or not. Returns at once.
    virtual void print(const PrintedReport &report, QWidget *askedBy) = 0;
};

} // namespace core
