#pragma once

#include "imports/RowSource.h"

#include <functional>
#include <memory>

namespace imports {

enum class ListKind : quint8 { Text, Cards, Workbook };

/// How a foreign file is read; what its kind does not need says nothing.
struct ListForm
{
    ListKind kind = ListKind::Text;
    int codePage = 0;        ///< of texts and cards
    char separator = ',';    ///< of texts
    QStringList sheets = {}; ///< of a workbook, those to choose from
    int sheet = 0;

    bool operator==(const ListForm &) const = default;
};

/// Asked at each piece of a file: once it says so, the rest cannot be read, which fails soon.
using Stops = std::function<bool()>;

/// What a look into the file says of it; text that is neither Unicode nor marked as such has the system's
/// code page. Throws core::Error where the file cannot be read, or is no list at all.
ListForm formOf(const QString &path, int systemCodePage, const Stops &stops = {});

/// The rows of the file as read in that form. Throws core::Error.
std::unique_ptr<RowSource> openList(const QString &path, const ListForm &form, const Stops &stops = {});

} // namespace imports
