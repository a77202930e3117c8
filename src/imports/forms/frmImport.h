#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "imports/Headings.h"
#include "imports/ListImport.h"

#include <QTimer>

#include <memory>

namespace Ui {
class frmImport;
}

namespace imports {

/// Imports a foreign list: the file and how it is read, what its columns mean, what becomes of rows that are
/// on file already, and what all that comes to. Deletes itself when closed; an import that runs is then
/// cancelled.
class frmImport : public appearance::Form
{
    Q_OBJECT

public:
    struct Context
    {
        const appearance::FormContext &forms;
        int codePage;  ///< of texts that do not tell theirs
        QString title; ///< a text key
        ListTarget target;
        ListImport::CopyDesk copyDesk;
        std::function<void(const ImportReport &report)> imported;
    };
    explicit frmImport(const Context &context);
    ~frmImport() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closing() override;

private:
    /// What a look into a file has found.
    struct Look
    {
        ListForm form;
        QList<QStringList> rows;
        Guess guess;
    };

    void fillChoices();
    void connectControls();
    void chooseFile();
    void lookInto(const std::optional<ListForm> &form);
    void lookAgain();
    void endLook();
    void showForm();
    void showRows();
    ListPlan plan() const;
    void begin(ListImport::Mode mode);
    void lookOn();
    void endImport();
    void showReport(const ImportReport &report);
    void saveRefusals();
    void cancel();
    void forgetReport();
    void showState();
    bool attempt(QLatin1StringView procedure, const QString &failureKey, const std::function<void()> &work);

    Context m_context;
    const core::TextLookup &m_texts;
    std::unique_ptr<Ui::frmImport> m_ui;
    QString m_path;
    Look m_list;
    std::atomic<bool> m_isClosing = false;
    std::unique_ptr<core::Background<Look>> m_look; ///< while it goes on
    ListImport::Mode m_mode = ListImport::Mode::Check;
    std::unique_ptr<ListImport> m_import; ///< while one runs
    QList<RefusedRow> m_refused;
    bool m_isImported = false; ///< nothing has been changed since
    bool m_isFilling = false;  ///< the controls change by the program
    QTimer m_looks;
};

} // namespace imports
