#pragma once

#include "core/CustomerInfo.h"
#include "lookup/CustomerFacts.h"

#include <QString>

namespace customers {

/// What a saved or deleted customer causes outside of the folder's windows. The program implements it.
class CustomerEffects
{
public:
    virtual ~CustomerEffects() = default;

    /// The customer list, where it is open, shows "select * from customer ", or what is searched for, anew.
    virtual void refreshCustomerList() = 0;
    /// Forwards the record to the unit or server.
    virtual void SendTDRData(const core::CustomerInfo &info) = 0;
    /// The customer stands in the file as `onFile` says: who is known to call, the call notes and an open
    /// card follow. `oldName` is the name before, empty for a customer who was not on file.
    virtual void customerSaved(qint32 sn, const QString &oldName, const lookup::CustomerFacts &onFile) = 0;
    /// The customer stands in the file no more: his numbers are to find nobody.
    virtual void customerDeleted(qint32 sn) = 0;
};

} // namespace customers
