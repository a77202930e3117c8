#include "imports/RefusalText.h"

using namespace Qt::StringLiterals;

namespace imports {

namespace {

QString reasonKey(Refusal why)
{
    switch (why) {
    case Refusal::Characters:
        return u"RefusedCharacters"_s;
    case Refusal::Unclosed:
        return u"RefusedUnclosed"_s;
    case Refusal::Columns:
        return u"RefusedColumns"_s;
    case Refusal::NoName:
        return u"RefusedNoName"_s;
    case Refusal::NoNumber:
        return u"RefusedNoNumber"_s;
    case Refusal::TooLong:
        return u"RefusedTooLong"_s;
    case Refusal::NoFlag:
        return u"RefusedNoFlag"_s;
    case Refusal::Repeats:
        return u"RefusedRepeats"_s;
    case Refusal::IdTaken:
        return u"RefusedIdTaken"_s;
    }
    return {};
}

} // namespace

QString captionOf(const core::TextLookup &texts, const TargetField &field)
{
    return texts.Lms(field.captionKey);
}

QString refusalText(const core::TextLookup &texts, const ListTarget &target, const RefusedRow &refused)
{
    const QString about = refused.field >= 0 ? captionOf(texts, target.fields.at(refused.field))
                                             : QString::number(refused.otherRow);
    const QString reason = texts.Lms(reasonKey(refused.why)).replace(u"%1"_s, about);
    return texts.Lms(u"RefusedRow"_s).replace(u"%1"_s, QString::number(refused.row)).replace(u"%2"_s, reason);
}

} // namespace imports
