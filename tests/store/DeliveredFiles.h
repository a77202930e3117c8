#pragma once

#include "support/TestDesk.h"

/// Makes a database file from one of the delivered schemas ("Customer", "SimplePhoneBook", ...).
inline void deliver(
    const QString &schema, const QString &path,
    const std::function<void(store::Database &)> &fill = [](store::Database &) {})
{
    QFile source(QFINDTESTDATA("../../data/schema/") + schema + u".sql"_s);
    QVERIFY2(source.open(QIODevice::ReadOnly), qPrintable(source.fileName()));
    store::createDatabase(path, QString::fromUtf8(source.readAll()), fill);
}
