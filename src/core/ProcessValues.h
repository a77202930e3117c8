#pragma once

#include <QString>

namespace core {

/// The values that the whole process shares, under their given names. Program owns the one instance.
struct ProcessValues
{
    /// The customer database file stood in the start folder when the program started (iniPath).
    bool CustomerDbExists = false;
    /// This is a developer's machine: test controls are shown (subMain).
    bool DeveloperMode = false;
    /// The program's version as shown (iniVariants).
    QString AppVersion;
    /// Rows of the caller-ID grid, its header row included (iniVariants).
    int MaxGridRows = 300;
    /// Stands between looked-up words: nothing in Chinese, else one blank (iniVariants).
    QString WordSeparator;
    /// The mark read from the OEM mark file, empty without one (subMain).
    QString OemMark;
    /// The product name in captions, empty for none (subMain).
    QString ProductDisplayName;
    /// The main window exists: the run log keeps its size limit and its on-screen copy (FrmMain).
    bool MainWindowReady = false;
    /// The caller number of the last caller-ID record (Dispatcher).
    QString LastCallerNumber;
};

} // namespace core
