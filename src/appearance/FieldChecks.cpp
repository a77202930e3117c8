#include "appearance/FieldChecks.h"

#include <QApplication>
#include <QFocusEvent>
#include <QTimer>

namespace appearance {

bool leavesField(const QEvent &event)
{
    if (event.type() != QEvent::FocusOut) {
        return false;
    }
    const Qt::FocusReason reason = static_cast<const QFocusEvent &>(event).reason();
    return reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason;
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
