#include "appearance/MouseRelease.h"

#include <QApplication>
#include <QTimer>

namespace appearance {

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
