#include "notes/NoteConditions.h"

#include "store/Database.h"
#include "store/SqlTokens.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace notes {

namespace {

QString moment(const QDateTime &time)
{
    return time.toString(u"yyyy-MM-dd hh:mm:ss"_s);
}

QStringList conditionsOf(const NoteConditions &asked)
{
    QStringList conditions{u"CallInfo.CallID = CustomerRequest.CallID"_s};
    const auto like = [&](QLatin1StringView column, const QString &text) {
        if (const QString wanted = text.trimmed(); !wanted.isEmpty()) {
            conditions.append(column + u" like '%"_s + store::quoted(wanted) + u"%'"_s);
        }
    };
    if (!asked.fixedCustomer.isEmpty()) {
        conditions.append(u"[CustomerName]='"_s + store::quoted(asked.fixedCustomer) + u'\'');
    }
    like("CustomerRequest.[CallID]"_L1, asked.callId);
    like("[CustomerName]"_L1, asked.customerName);
    like("[Consultant]"_L1, asked.consultant);
    conditions.append(u"[DateAndTime]>='"_s + moment(asked.start) + u'\'');
    conditions.append(u"[DateAndTime]<='"_s + moment(asked.end) + u'\'');
    like("[CallContent]"_L1, asked.content);
    like("[Request]"_L1, asked.request);
    like("[Response]"_L1, asked.response);
    like("[Note]"_L1, asked.note);
    if (asked.ifResolved == 1 || asked.ifResolved == 2) {
        conditions.append(asked.ifResolved == 1 ? u"[IfResolved] = True"_s : u"[IfResolved] = False"_s);
    }
    return conditions;
}

QString joined(const NoteConditions &asked)
{
    return u"select CustomerRequest.[CallID],CallInfo.[CustomerName],CallInfo.[DateAndTime],"
           "CallInfo.[Consultant],CallInfo.[CallContent],CustomerRequest.[Request],"
           "CustomerRequest.[Response],CustomerRequest.[IfResolved],CustomerRequest.[Note]"
           " from CustomerRequest,CallInfo where "_s +
           conditionsOf(asked).join(" and "_L1) +
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

// Compares dates as texts, as the search does.
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
