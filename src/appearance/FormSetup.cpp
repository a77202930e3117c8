#include "appearance/FormSetup.h"

#include <QScreen>

namespace appearance {

void FormSetup::load(QWidget &form, Place place)
{
    m_loaded = true;
    m_place = place;
    m_services.openForms.IncOpenedForm(&form);
    m_services.translator.iniFormFonts(form);
    m_services.translator.iniFormLang(form);
    const bool placed =
        m_place == Place::OwnChoice || form.restoreGeometry(m_services.windows.geometry(form.objectName()));
    if (!placed && form.testAttribute(Qt::WA_Resized)) {
        // Window managers that look for free room put a large window half off the screen.
        form.move(form.screen()->availableGeometry().center() - form.rect().center());
    }
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
