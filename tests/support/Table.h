#pragma once

#include <QTest>

using namespace Qt::StringLiterals; // every test begins with this header or one that includes it

namespace support {

/// The table of a data-driven test: made with the names of its columns, called with each row's name and
/// cells.
template <typename... Column>
class Table
{
public:
    template <typename... Name>
    explicit Table(Name... columns)
    {
        (QTest::addColumn<Column>(columns), ...);
    }
    void operator()(const char *name, const Column &...cells) const { (QTest::newRow(name) << ... << cells); }
};

} // namespace support
