#pragma once

#include "lookup/PopUpDecision.h"
#include "lookup/frmPopUp.h"

#include "core/CallRecord.h"
#include "core/RunLog.h"
#include "core/Settings.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>

namespace lookup {

/// Pops callers up: decides by the record whether, and keeps the one popup window. Of several calls in one turn of
/// the event loop the newest is shown.
class CallerPopUp : public QObject
{
public:
    struct Context
    {
        core::RunLog &log;
        const core::Settings &settings;
        const core::TextLookup &texts;
        core::Navigator &navigator;
        appearance::FormServices services;
        std::function<const QWidget &()> mainWindow;
    };

    explicit CallerPopUp(Context context) : m_context(std::move(context)) {}
    ~CallerPopUp() override;

    void ShowPopup(const core::CallRecord &info);
    /// Closes the card, if one stands.
    void close();

private:
    void showNext();

    Context m_context;
    std::optional<PopUpView> m_next;
    QPointer<frmPopUp> m_form;
};

} // namespace lookup
