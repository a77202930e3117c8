#include "customers/CustomerForwarding.h"

namespace customers {

core::CustomerInfo GetCustomerInfo(const CustomerRecord &saved)
{
    core::CustomerInfo info;
    for (size_t place = 0; place < saved.shown.size(); ++place) {
        const CustomerField &field = customerFields().at(place);
        info.fields.append({field.width, storedValue(field, saved.shown.at(place)).toString(), field.column});
    }
    return info;
}

QList<ReceivedField> receivedFields(QByteArrayView image)
{
    QList<ReceivedField> received;
    if (image.size() != core::CustomerInfo::size) {
        return received;
    }
    for (const CustomerField &field : customerFields()) {
        QByteArrayView bytes = image.first(field.width);
        while (bytes.endsWith(' ')) {
            bytes.chop(1);
        }
        received.append({field.column, bytes});
        image = image.sliced(field.width);
    }
    return received;
}

} // namespace customers
