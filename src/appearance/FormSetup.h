#pragma once

#include "core/OpenForms.h"
#include "core/WindowMemory.h"
#include "language/forms/FormTranslator.h"

#include <QWidget>

namespace appearance {

/// What every form needs from the program.
struct FormServices
{
    const language::FormTranslator &translator;
    core::OpenForms &openForms;
    core::WindowMemory &windows;
};

/// The load and unload handler that every form has, as one of its members: counts it as open, sets its fonts
/// and texts, and gives it the place on the screen that it had the last time.
class FormSetup
{
public:
    enum class Place { Remembered, OwnChoice };

    FormSetup(QWidget &form, const FormServices &services) : m_form(form), m_services(services) {}
    ~FormSetup();
    Q_DISABLE_COPY_MOVE(FormSetup)

    /// Call once the form's controls exist.
    void load(Place place = Place::Remembered);
    /// Remembers the form's place, where it is to be; call when it closes.
    void rememberGeometry();

    /// Takes off the size of a form, not yet shown, what the screen has no room for. Loading a form with a
    /// size does it, too.
    static void fitToScreen(QWidget &form);
    static void center(QWidget &form);

private:
    void placeAsRemembered();

    QWidget &m_form;
    FormServices m_services;
    Place m_place = Place::Remembered;
    bool m_loaded = false;
};

} // namespace appearance
