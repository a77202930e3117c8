#pragma once

#include "appearance/Form.h"
#include "notes/NoteConditions.h"
#include "notes/forms/NoteContext.h"
#include "store/Connection.h"
#include "store/ResultModel.h"

#include <QHash>
#include <QPointer>

#include <functional>
#include <memory>

namespace Ui {
class frmNotePadManager;
}

namespace notes {

class ReportRun;

/// Searches all call notes, and shows, prints and exports what it finds. Deletes itself when closed.
class frmNotePadManager : public appearance::Form
{
    Q_OBJECT

public:
    /// With `fixedCustomer` every search finds the notes of that customer only.
    frmNotePadManager(const NoteContext &context, const QString &fixedCustomer);
    ~frmNotePadManager() override;

    void ShowResult();
    /// Goes along with customers' new names, by their old ones: what was searched for is searched for again.
    void followNames(const QHash<QString, QString> &newNames);

Q_SIGNALS:
    void addNoteRequested(const QString &customerName);

private:
    void connectButtons();
    void setDefaultRange();
    void setRange(QDate first, QDate last);
    void showAllDates();
    void fillIfResolved();
    void setUpGrid();
    void translateHeadings();
    NoteConditions conditions() const;
    void search(const NoteConditions &conditions);
    std::optional<QString> onlyCustomer() const;
    bool GetRecordSet(const QString &select);
    void showTotal();
    void showTrouble();
    void offerReport();
    void openCustomer(int row);
    void readReport(const std::function<void(const QString &)> &use);
    void exportResult();
    void printResult();

    NoteContext m_context;
    QString m_fixedCustomer;
    NoteConditions m_searched;    ///< what the result that is shown was searched by
    QPointer<ReportRun> m_report; ///< that is being made
    store::Connection m_connection;
    store::ResultModel m_result;
    std::unique_ptr<Ui::frmNotePadManager> m_ui;
};

} // namespace notes
