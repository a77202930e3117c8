#pragma once

#include "appearance/OneWindow.h"
#include "copies/forms/frmCopies.h"

namespace copies {

/// The window of the copies.
class CopyWindows
{
public:
    /// All of it must outlive the window.
    struct Context
    {
        const appearance::FormContext &forms;
        CopyKeeper &keeper;
        frmCopies::LookInto lookInto;
    };

    explicit CopyWindows(const Context &context);

    /// Opens the window or brings it to the front.
    void showCopies() { m_copies.get().bringToFront(); }

private:
    Context m_context;
    appearance::OneWindow<frmCopies> m_copies;
};

} // namespace copies
