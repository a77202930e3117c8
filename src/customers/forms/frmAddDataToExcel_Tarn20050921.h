#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "customers/CustomerExport.h"

#include <QTimer>

#include <memory>

namespace Ui {
class frmAddDataToExcel_Tarn20050921;
}

namespace customers {

/// Exports the ticked fields of all customers to a spreadsheet file, while calls keep arriving. Deletes
/// itself when closed; an export that runs is then dropped.
class frmAddDataToExcel_Tarn20050921 : public appearance::Form
{
    Q_OBJECT

public:
    explicit frmAddDataToExcel_Tarn20050921(const appearance::FormContext &context);
    ~frmAddDataToExcel_Tarn20050921() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool mayClose() override;
    void closing() override;

private:
    void fillFields();
    /// Whatever the list shows, all of them are exported.
    void showCount();
    void tickAll(bool ticked);
    QList<int> tickedFields() const;
    QStringList headings(const QList<int> &fields) const;

    void exportTicked();
    void look();
    void cancel();
    /// Puts the form back, and tells the outcome where there is one.
    void end(const QString &outcome);
    void showProgress();
    void showRunning(bool running);

    appearance::FormContext m_context;
    std::unique_ptr<Ui::frmAddDataToExcel_Tarn20050921> m_ui;
    QString m_target;
    std::unique_ptr<CustomerExport> m_export; ///< while one runs
    QTimer m_looks;
};

} // namespace customers
