#include "notes/NoteConditions.h"

#include "store/Database.h"
#include "store/SqlTokens.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace notes {

namespace {

QString like(QLatin1StringView column, const QString &text)
{
    const QString wanted = text.trimmed();
    return wanted.isEmpty() ? QString()
                            : u" and "_s + column + u" like '%"_s + store::quoted(wanted) + u"%'"_s;
}

QString moment(const QDateTime &time)
{
    return time.toString(u"yyyy-MM-dd hh:mm:ss"_s);
}

QString resolved(int place)
{
    return place == 1   ? u" and [IfResolved] = True"_s
           : place == 2 ? u" and [IfResolved] = False"_s
                        : QString();
}

QString joined(const NoteConditions &asked)
{
    return u"select CustomerRequest.[CallID],CallInfo.[CustomerName],CallInfo.[DateAndTime],"
           "CallInfo.[Consultant],CallInfo.[CallContent],CustomerRequest.[Request],CustomerRequest.[Response]"
           ","
           "CustomerRequest.[IfResolved],CustomerRequest.[Note] from CustomerRequest,CallInfo"
           " where CallInfo.CallID = CustomerRequest.CallID"_s +
           (asked.fixedCustomer.isEmpty()
                ? QString()
                : u" and [CustomerName]='"_s + store::quoted(asked.fixedCustomer) + u'\'') +
           like("CustomerRequest.[CallID]"_L1, asked.callId) + like("[CustomerName]"_L1, asked.customerName) +
           like("[Consultant]"_L1, asked.consultant) + u" and [DateAndTime]>='"_s + moment(asked.start) +
           u"' and [DateAndTime]<='"_s + moment(asked.end) + u'\'' + like("[CallContent]"_L1, asked.content) +
           like("[Request]"_L1, asked.request) + like("[Response]"_L1, asked.response) +
           like("[Note]"_L1, asked.note) + resolved(asked.ifResolved) +
           u" order by CallInfo.[CustomerName],CustomerRequest.[CallID],CallInfo.[DateAndTime],"
           "CustomerRequest.[IfResolved]"_s;
}

QDate dayOf(const QByteArray &moment)
{
    constexpr int dayLength = 10;
    return QDate::fromString(QString::fromUtf8(moment.first(std::min(moment.size(), qsizetype(dayLength)))),
                             u"yyyy-MM-dd"_s);
}

} // namespace

// Dates are compared as the search does it, as texts.
NoteDays daysOfNotes(core::RunLog &log, const QString &customerFile, QDate today)
{
    QByteArray first;
    QByteArray last;
    const bool read = log.trap("cmdAllDates_Click"_L1, [&] {
        store::Database database(customerFile, store::Database::Mode::ReadOnly);
        database.forEachRow(u"CallInfo"_s, {u"DateAndTime"_s}, [&](const store::Row &row) {
            const QByteArrayView moment = row.bytes(0);
            if (!moment.isEmpty() && (first.isEmpty() || moment < first)) {
                first = moment.toByteArray();
            }
            if (moment > last) {
                last = moment.toByteArray();
            }
        });
    });
    if (!read || first.isEmpty()) {
        return read ? NoteDays{today, today} : NoteDays{};
    }
    const NoteDays days = {dayOf(first), dayOf(last)};
    return {days.first.isValid() ? std::min(days.first, today) : days.first,
            days.last.isValid() ? std::max(days.last, today) : days.last};
}

QString MakeCondition(core::RunLog &log, const NoteConditions &conditions)
{
    return log.trap("frmNotePadManager_Load"_L1, QString(), [&] { return joined(conditions); });
}

} // namespace notes
