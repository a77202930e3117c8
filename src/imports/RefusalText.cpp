#include "imports/RefusalText.h"

#include <array>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

/// In the order of the refusals.
constexpr std::array reasonKeys{
    "RefusedCharacters"_L1, "RefusedUnclosed"_L1, "RefusedColumns"_L1,
    "RefusedNoName"_L1,     "RefusedNoNumber"_L1, "RefusedTooLong"_L1,
    "RefusedNoFlag"_L1,     "RefusedRepeats"_L1,  "RefusedIdTaken"_L1,
};

} // namespace

QString captionOf(const core::TextLookup &texts, const TargetField &field)
{
    return texts.Lms(field.captionKey);
}

QString refusalText(const core::TextLookup &texts, const ListTarget &target, const RefusedRow &refused)
{
    const QString about = refused.field >= 0 ? captionOf(texts, target.fields.at(refused.field))
                                             : QString::number(refused.otherRow);
    const QString reason = texts.Lms(reasonKeys.at(static_cast<size_t>(refused.why))).replace(u"%1"_s, about);
    return texts.Lms(u"RefusedRow"_s).replace(u"%1"_s, QString::number(refused.row)).replace(u"%2"_s, reason);
}

} // namespace imports
