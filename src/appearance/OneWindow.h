#pragma once

#include "appearance/Form.h"

#include <QPointer>

#include <functional>

namespace appearance {

/// The one window of its kind: made when it is first asked for, and anew after it was closed.
template <typename F>
class OneWindow
{
public:
    using Make = std::function<F *()>;

    explicit OneWindow(Make make) : m_make(std::move(make)) {}
    /// Deletes what is open, without a question.
    ~OneWindow() { delete m_form.data(); }
    Q_DISABLE_COPY_MOVE(OneWindow)

    /// Null where it is not open. One that was just closed is not, even if Qt has yet to delete it.
    F *ifOpen() const
    {
        F *form = m_form;
        return form != nullptr && !form->isClosed() ? form : nullptr;
    }
    /// A new one is not shown yet.
    F &get()
    {
        F *form = ifOpen();
        if (form == nullptr) {
            form = m_make();
            m_form = form;
        }
        return *form;
    }

private:
    Make m_make;
    QPointer<F> m_form;
};

} // namespace appearance
