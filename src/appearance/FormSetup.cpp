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

} // namespace

// Window managers that look for free room put a large window half off the screen.
void FormSetup::center(QWidget &form)
{
    const QRect screen = form.screen()->availableGeometry();
    const QSize free = screen.size() - (form.rect() + likelyFrame(form)).size();
    form.move(screen.topLeft() + QPoint(std::max(free.width(), 0), std::max(free.height(), 0)) / 2);
}

FormSetup::~FormSetup()
{
    if (m_loaded) {
        m_services.openForms.DecOpenedForm();
    }
}

void FormSetup::load(Place place)
{
    m_loaded = true;
    m_place = place;
    m_services.openForms.IncOpenedForm(&m_form);
    m_services.translator.iniFormFonts(m_form);
    m_services.translator.iniFormLang(m_form);
    if (m_place == Place::Remembered) {
        placeAsRemembered();
    }
}

void FormSetup::placeAsRemembered()
{
    const bool placed = m_form.restoreGeometry(m_services.windows.geometry(m_form.objectName()));
    if (!m_form.testAttribute(Qt::WA_Resized) || m_form.windowState() != Qt::WindowNoState) {
        return;
    }
    const QSize wanted = m_form.size();
    fitToScreen(m_form);
    if (!placed || m_form.size() != wanted) {
        center(m_form);
    }
}

// The screen may have become smaller, or the type larger, than when the size was remembered or designed. A
// window that is made to grow when it is shown loses the place that was chosen for it with its frame.
void FormSetup::fitToScreen(QWidget &form)
{
    const QRect room = form.screen()->availableGeometry() - likelyFrame(form);
    form.resize(form.size().boundedTo(room.size()).expandedTo(form.minimumSizeHint()));
}

void FormSetup::rememberGeometry()
{
    if (m_place == Place::Remembered) {
        m_services.windows.setGeometry(m_form.objectName(), m_form.saveGeometry());
    }
}

} // namespace appearance
