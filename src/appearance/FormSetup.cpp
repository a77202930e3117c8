#include "appearance/FormSetup.h"

#include <QScreen>
#include <QStyle>

namespace appearance {

namespace {

// Before a window is shown, nobody knows how large a frame it will get.
QMargins likelyFrame(const QWidget &form)
{
    const int side = form.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    return {side, side + form.style()->pixelMetric(QStyle::PM_TitleBarHeight), side, side};
}

// Window managers that look for free room put a large window half off the screen.
void center(QWidget &form)
{
    const QRect screen = form.screen()->availableGeometry();
    const QSize free = screen.size() - (form.rect() + likelyFrame(form)).size();
    form.move(screen.topLeft() + QPoint(std::max(free.width(), 0), std::max(free.height(), 0)) / 2);
}

} // namespace

void FormSetup::load(QWidget &form, Place place)
{
    m_loaded = true;
    m_place = place;
    m_services.openForms.IncOpenedForm(&form);
    m_services.translator.iniFormFonts(form);
    m_services.translator.iniFormLang(form);
    if (m_place == Place::Remembered) {
        placeAsRemembered(form);
    }
}

void FormSetup::placeAsRemembered(QWidget &form)
{
    const bool placed = form.restoreGeometry(m_services.windows.geometry(form.objectName()));
    if (!form.testAttribute(Qt::WA_Resized) || form.windowState() != Qt::WindowNoState) {
        return;
    }
    const QSize wanted = form.size();
    fitToScreen(form);
    if (!placed || form.size() != wanted) {
        center(form);
    }
}

// The screen may have become smaller, or the type larger, than when the size was remembered or designed. A
// window that is made to grow when it is shown loses the place that was chosen for it with its frame.
void FormSetup::fitToScreen(QWidget &form)
{
    const QRect room = form.screen()->availableGeometry() - likelyFrame(form);
    form.resize(form.size().boundedTo(room.size()).expandedTo(form.minimumSizeHint()));
}

void FormSetup::rememberGeometry(const QWidget &form)
{
    if (m_place == Place::Remembered) {
        m_services.windows.setGeometry(form.objectName(), form.saveGeometry());
    }
}

void FormSetup::unload()
{
    if (std::exchange(m_loaded, false)) {
        m_services.openForms.DecOpenedForm();
    }
}

} // namespace appearance
