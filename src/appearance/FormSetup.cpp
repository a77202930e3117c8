#include "appearance/FormSetup.h"

namespace appearance {

void FormSetup::load(QWidget &form, Place place)
{
    m_loaded = true;
    m_place = place;
    m_services.openForms.IncOpenedForm(&form);
    m_services.translator.iniFormFonts(form);
    m_services.translator.iniFormLang(form);
    if (m_place == Place::Remembered) {
        form.restoreGeometry(m_services.windows.geometry(form.objectName()));
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

void bringToFront(QWidget &form)
{
    form.setWindowState(form.windowState() & ~Qt::WindowMinimized);
    form.show();
    form.raise();
    form.activateWindow();
}

} // namespace appearance
