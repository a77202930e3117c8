#pragma once

#include "appearance/Form.h"
#include "notes/CallNotes.h"
#include "notes/forms/NoteContext.h"

#include <QHash>
#include <QPointer>

#include <functional>
#include <memory>

namespace Ui {
class frmNotePad;
}

namespace notes {

class ReportRun;

/// The call note editor: the customer's notes so far on its first page, one call with its entries on the
/// second. Deletes itself when closed.
class frmNotePad : public appearance::Form
{
    Q_OBJECT

public:
    explicit frmNotePad(const NoteContext &context);
    ~frmNotePad() override;

    /// Begins a call of now for a customer, and shows the notes kept of him and the page (0 or 1).
    void begin(const QString &customerName, int page);
    /// Goes along with customers' new names, by their old ones.
    void followNames(const QHash<QString, QString> &newNames);

protected:
    bool mayClose() override;

private:
    void connectButtons();
    void connectMessage();
    NoteEntry entry() const;
    bool isUnsaved() const;
    bool save();
    QWidget *controlOf(const QString &column) const;
    void follow(const CallFields &call);
    void focusFirstToFill();
    void clearEntry();
    void refreshReport();
    /// The key's text stands in place of an empty report.
    void showReport(const QString &report, const QString &hintKey);
    void print();
    /// The reading deletes itself at its end.
    ReportRun *readReport(const std::function<void(const QString &)> &use);

    NoteContext m_context;
    CallNotes m_notes;
    std::optional<CallFields> m_call; ///< as this editor has saved it
    std::unique_ptr<Ui::frmNotePad> m_ui;
    QPointer<ReportRun> m_refresh; ///< of the report that is shown next
};

} // namespace notes
