#pragma once

#include "core/CustomerInfo.h"
#include "customers/CustomerFields.h"

#include <QByteArrayView>
#include <QList>

namespace customers {

/// The record that is forwarded of a saved customer: every column as it is stored.
core::CustomerInfo GetCustomerInfo(const CustomerRecord &saved);

/// One text of a received record, without the blanks behind it, in the sender's code page.
struct ReceivedField
{
    QLatin1StringView column;
    QByteArrayView bytes;
};

/// The texts of a record's image, in order; nothing for bytes of another size. They lie within the image.
QList<ReceivedField> receivedFields(QByteArrayView image);

} // namespace customers
