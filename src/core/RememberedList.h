#pragma once

#include "core/Paths.h"

#include <QStringList>

namespace core {

/// What operators have typed into one combo box in one language: a text file "<combo>_<language>.txt" in the
/// user data folder, an item a line, UTF-8, in the order in which they came. The file only grows.
class RememberedList
{
public:
    /// Throws Error for a name that could leave the folder. Touches nothing yet.
    RememberedList(const Paths &paths, const QString &combo, const QString &language);

    /// Empty without a file. Throws Error where it cannot be read.
    QStringList items() const;
    /// Adds a line; one of several lines is refused. Throws Error.
    void append(const QString &item) const;

private:
    QString m_path;
};

} // namespace core
