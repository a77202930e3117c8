#pragma once

#include "RecordWriter.h"
#include "support/Test.h"

namespace support {

/// A caller-ID record with everything that a desk shows; by default it names the sample desk's first
/// customer.
inline QByteArray call(const QString &number, const QString &name, const QString &line = u"5550100"_s,
                       const sim::CodePageChoice &codePage = {}, const QString &match = u"1"_s)
{
    sim::CallFields fields;
    fields.line = line;
    fields.number = number;
    fields.name = name;
    fields.match = match;
    fields.vip = match.isEmpty() ? QString() : u"Y"_s;
    fields.tailTime = u"2026-11-20 10:42"_s;
    fields.tailExt = u"201"_s;
    fields.tailTel = u"5550106"_s;
    return sim::callRecord(fields, codePage);
}

} // namespace support
