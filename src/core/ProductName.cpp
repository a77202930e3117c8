#include "core/ProductName.h"

using namespace Qt::StringLiterals;

namespace core {

QString productName(const QString &oemMark, const TextLookup &texts)
{
    const QString text = texts.Lms(oemMark);
    const QString name = text.trimmed().isEmpty() ? oemMark : text;
    return name.compare("nothing"_L1, Qt::CaseInsensitive) == 0 ? QString() : name;
}

} // namespace core
