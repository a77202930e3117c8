#pragma once

#include "core/Navigator.h"

namespace app {

/// Opens the windows of all folders for each other.
class Windows : public core::Navigator
{
public:
    bool canShow(core::Window window) const override;
    void show(core::Window window) override;
    void ShowHelp(const QString &helpId) override;
    void Show_Editor(const QString &source, qint32 sn) override;
    void addCaller(const QString &number, const QString &keyWord) override;
    void addCustomer(const QString &number, const QString &keyWord) override;
    void ShowCustomerByName(const QString &name) override;
    void ShowNotePad(const QString &customerName) override;
    void showPhoneBook(const QString &query) override;
    void showCustomerList(const QString &query) override;
};

} // namespace app
