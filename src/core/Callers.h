#pragma once

#include "core/CallRecord.h"

#include <QStringView>

namespace core {

/// What the desk itself knows of those who call. Asked for each call, so no answer waits for a file.
class Callers
{
public:
    virtual ~Callers() = default;

    /// False as long as nobody's number is known, because the file cannot be read: a call is then shown as it
    /// came, and looked at again later.
    virtual bool areKnown() const = 0;
    /// The popup filter: whether the first of both numbers that is a customer's is that of one whose pop-up
    /// flag is not "0". An empty number is nobody's.
    virtual bool callerPopsUp(QStringView number, QStringView otherNumber) const = 0;
    /// Makes a call that its sender matched with nobody the one of the customer who holds the caller number.
    /// Where it is his, by this match or the sender's, his row fills what the record leaves blank. What the
    /// sender wrote stays as it is.
    virtual void completeFromDesk(CallRecord &record) const = 0;
};

} // namespace core
