#include "notes/NoteStatements.h"

#include "store/SqlTokens.h"

using namespace Qt::StringLiterals;

namespace notes {

using store::quoted;

QString newCallId(const QDateTime &now)
{
    return u"Call"_s + now.toString(u"yyyyMMddhhmmss"_s);
}

QString noteQuery(const QString &customerName)
{
    return u"select CustomerRequest.[CallID],CallInfo.[CustomerName],CallInfo.[DateAndTime],"
           "CallInfo.[Consultant],CustomerRequest.[Request],CustomerRequest.[Response],"
           "CustomerRequest.[IfResolved],CustomerRequest.[Note] from CustomerRequest,CallInfo"
           " where CallInfo.CallID = CustomerRequest.CallID and CallInfo.[CustomerName]='"_s +
           quoted(customerName) + u'\'';
}

QString customerQuery(const QString &customerName)
{
    return u"select * from Customer where [customername]='"_s + quoted(customerName) + u'\'';
}

QString callQuery(const QString &callId)
{
    return u"select * from CallInfo where [callid]='"_s + quoted(callId) + u'\'';
}

QString contentQuery(const QString &callId)
{
    return u"Select * from callinfo where [callid]='"_s + quoted(callId) + u'\'';
}

QString callInsert(const NoteEntry &entry)
{
    return u"insert into callinfo values('"_s + quoted(entry.callId) + u"','"_s + quoted(entry.customerName) +
           u"','"_s + entry.dateAndTime.toString(u"yyyy-MM-dd hh:mm:ss"_s) + u"','"_s +
           quoted(entry.consultant) + u"','"_s + quoted(entry.content) + u"')"_s;
}

QString callUpdate(const NoteEntry &entry)
{
    return u"update callinfo set [CustomerName]='"_s + quoted(entry.customerName) + u"',[Consultant]='"_s +
           quoted(entry.consultant) + u"',[CallContent]='"_s + quoted(entry.content) + u"' where CallID='"_s +
           quoted(entry.callId) + u'\'';
}

QString requestInsert(const NoteEntry &entry)
{
    return u"insert into customerrequest values('"_s + quoted(entry.callId) + u"','"_s +
           quoted(entry.request) + u"','"_s + quoted(entry.response) + u"',"_s +
           QString::number(entry.ifResolved) + u",'"_s + quoted(entry.note) + u"')"_s;
}

QString customerRename(const QString &oldName, const QString &newName)
{
    return u"update CallInfo set [CustomerName]='"_s + quoted(newName) + u"' where [CustomerName]='"_s +
           quoted(oldName) + u'\'';
}

store::JoinTables noteTables(const std::optional<QString> &customer)
{
    return {.details = u"CustomerRequest"_s,
            .masters = u"CallInfo"_s,
            .group = u"CustomerName"_s,
            .key = u"CallID"_s,
            .onlyGroup = customer};
}

} // namespace notes
