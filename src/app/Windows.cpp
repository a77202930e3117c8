#include "app/Windows.h"

namespace app {

// The forms behind these doors come with the customer database, the phone book and the notes; until one is
// here, its buttons are disabled.
bool Windows::canShow(core::Window) const
{
    return false;
}

void Windows::show(core::Window) {}
void Windows::ShowHelp(const QString &) {}
void Windows::Show_Editor(const QString &, qint32) {}
void Windows::addCaller(const QString &, const QString &) {}
void Windows::addCustomer(const QString &, const QString &) {}
void Windows::ShowCustomerByName(const QString &) {}
void Windows::ShowNotePad(const QString &) {}
void Windows::showPhoneBook(const QString &) {}
void Windows::showCustomerList(const QString &) {}

} // namespace app
