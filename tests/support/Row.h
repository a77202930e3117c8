#pragma once

#include "support/Test.h"

namespace support {

/// A row of the table that a test goes through: where a check fails in it, its name is told.
class Row
{
public:
    explicit Row(const char *name) : m_name(name) {}
    ~Row()
    {
        if (QTest::currentTestFailed()) {
            qWarning("in the row \"%s\"", m_name);
        }
    }
    Q_DISABLE_COPY_MOVE(Row)

private:
    const char *m_name;
};

} // namespace support
