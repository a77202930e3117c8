#include "appearance/FieldLeft.h"

#include <QApplication>
#include <QFocusEvent>
#include <QTimer>

namespace appearance {

namespace {

class LeaveWatch : public QObject
{
public:
    LeaveWatch(QWidget &field, QObject &receiver, const std::function<void()> &work)
        : QObject(&receiver), m_work(work)
    {
        field.installEventFilter(this);
    }

protected:
    // Not at once: a field is also left because it is being deleted, and a box would open while the keyboard
    // is on its way.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::FocusOut) {
            const Qt::FocusReason reason = static_cast<const QFocusEvent *>(event)->reason();
            if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
                QTimer::singleShot(0, this, m_work);
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    const std::function<void()> m_work;
};

} // namespace

void onLeft(QWidget &field, QObject &receiver, const std::function<void()> &work)
{
    new LeaveWatch(field, receiver, work);
}

void whenReleased(QWidget &form, const std::function<void()> &work)
{
    constexpr std::chrono::milliseconds aMoment{20};
    if (QApplication::mouseButtons() != Qt::NoButton || QApplication::activeModalWidget() != nullptr) {
        QTimer::singleShot(aMoment, &form, [&form, work] { whenReleased(form, work); });
    } else if (form.isVisible()) {
        work();
    }
}

} // namespace appearance
