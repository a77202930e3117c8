#include "store/TextOrder.h"

namespace store {

int compareJet(QByteArrayView left, QByteArrayView right)
{
    return left.compare(right, Qt::CaseInsensitive);
}

} // namespace store
