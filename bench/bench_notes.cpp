#include "DeskData.h"
#include "Report.h"
#include "store/JoinModel.h"
#include "store/Connection.h"
#include "store/Upgrade.h"
#include "core/QtClock.h"
#include <QCoreApplication>
#include <QTemporaryDir>
#include <QElapsedTimer>
#include <cstdio>
using namespace Qt::StringLiterals;
int main(int c, char**v){ QCoreApplication app(c,v); QTemporaryDir d; QString p=d.filePath(u"Customer.ccsm"_s);
 auto paths=core::pathsBelow(d.path(), d.path()); core::QtClock clock; core::ProcessValues values; core::RunLog log(paths,clock,values);
 bench::makeCustomers(p,1000); store::UpdateDatabase_Customer_0606191111(log,paths); QElapsedTimer t; t.start(); bench::addCallNotes(p,100000); std::printf("fill %lld\n",t.elapsed());
 store::Connection con; con.open(p);
 const QString head=u"select CustomerRequest.[CallID],CallInfo.[CustomerName],CallInfo.[DateAndTime],CallInfo.[Consultant],CallInfo.[CallContent],CustomerRequest.[Request],CustomerRequest.[Response],CustomerRequest.[IfResolved],CustomerRequest.[Note] from CustomerRequest,CallInfo where CallInfo.CallID = CustomerRequest.CallID and [DateAndTime]>='2001-01-01 00:00:00' and [DateAndTime]<='2009-12-31 23:59:59'"_s;
 for (QString cond: {u""_s, u" and [Request] like '%zzz%'"_s, u" and [Request] like '%199999%'"_s, u" and [CustomerName] like '%zzz%'"_s, u" and [Consultant] like '%39%'"_s, u" and [CallContent] like '%zzz%'"_s, u" and CustomerRequest.[CallID] like '%zzz%'"_s, u" and [IfResolved] = True"_s, u" and [Note] like '%by 7%' and [Consultant] like '%r 8%'"_s, u" and [DateAndTime]>='2009'"_s}) {
  store::JoinReading r(con.database(), store::takeApart(head+cond+u" order by CallInfo.[CustomerName],CustomerRequest.[CallID],CallInfo.[DateAndTime],CustomerRequest.[IfResolved]"_s,{u"CustomerRequest"_s,u"CallInfo"_s,u"CustomerName"_s,u"CallID"_s}), store::JoinReading::Columns::Keys);
  t.restart(); qint64 n=0; qint64 first=-1, longest=0; int slices=0; bool more=true; while(more){ QElapsedTimer s; s.start(); more=r.readOn([&](const store::Row&){n++;}); longest=std::max(longest,s.elapsed()); slices++; if(n>=100&&first<0) first=t.elapsed(); }
  std::printf("%-50s rows %lld first %lld all %lld longest %lld slices %d\n",qPrintable(cond),n,first,t.elapsed(),longest,slices); std::fflush(stdout);
 }
}
