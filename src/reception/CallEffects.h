#pragma once

#include "core/CallRecord.h"

#include <QString>

namespace reception {

/// What a datagram may cause. The main program implements it; the dispatch itself knows no window, no socket
/// and no database.
class CallEffects
{
public:
    virtual ~CallEffects() = default;

    /// Sets the main window's state to normal; a hidden one stays hidden.
    virtual void setMainWindowNormal() = 0;
    /// Shows the main window in its normal state.
    virtual void showMainWindow() = 0;
    virtual void ShowCallerID_tarn(const core::CallRecord &record) = 0;
    /// A call that was not listed when it came; as many of those that are came after it.
    virtual void showEarlierCall(const core::CallRecord &record, int newerCalls) = 0;
    /// What is known of a call by now, of which `shown` was shown.
    virtual void showCallAgain(const core::CallRecord &shown, const core::CallRecord &now) = 0;
    /// Another call is the last one (Dispatcher::lastCall).
    virtual void showLastCaller() = 0;
    virtual void ShowPopup(const core::CallRecord &record) = 0;
    /// `datagramText` is the whole datagram.
    virtual void ShowSmallMessage(const QString &datagramText) = 0;
    virtual bool byebye(const QString &prompt) = 0;
};

} // namespace reception
