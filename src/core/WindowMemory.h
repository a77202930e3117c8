#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"

#include <QByteArray>
#include <QHash>
#include <QString>

namespace core {

/// Where each window stood when it was last used, kept in "Windows.json" of the data folder: a JSON object
/// from window name to base64 of Qt's own geometry bytes. A file that is no such object counts as
/// empty.
class WindowMemory
{
public:
    WindowMemory(const Paths &paths, RunLog &log) : m_paths(paths), m_log(log) {}

    void load();
    /// Empty for a window that was never remembered.
    QByteArray geometry(const QString &window) const { return m_geometries.value(window); }
    /// Saved at once where it differs.
    void setGeometry(const QString &window, const QByteArray &geometry);

private:
    void save();

    const Paths &m_paths;
    RunLog &m_log;
    QHash<QString, QByteArray> m_geometries;
};

} // namespace core
