#include "reception/SampleRecord.h"

#include <initializer_list>
#include <utility>

namespace reception {

QByteArray sampleCallRecord(const QDateTime &time)
{
    QByteArray record(242, ' ');
    const std::initializer_list<std::pair<qsizetype, QByteArray>> fields = {
        {1, "<CRMV1"},
        {22, "0007"},
        {31, time.toString(u"yyyy-MM-dd HH:mm:ss").toLatin1()},
        {50, "5550101"},
        {78, "5550199"},
        {111, ">"},
        {113, "Sample caller"},
        {144, "1"},
        {154, "127.0.0.1"},
        {194, "Y"}};
    for (const auto &[column, text] : fields) {
        record.replace(column - 1, text.size(), text);
    }
    return record + "{RAWCID:[5550199]}{DETAILDES:[Sample record]}";
}

} // namespace reception
