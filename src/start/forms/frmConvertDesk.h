#pragma once

#include "conversion/DeskConversion.h"
#include "core/Background.h"
#include "core/Error.h"
#include "core/Prompts.h"
#include "core/TextLookup.h"
#include "language/forms/FormTranslator.h"

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class frmConvertDesk;
}

namespace start {

class ConversionRun;

/// Shows what an old desk holds, converts it when it is told to, and is accepted once that is done.
/// Cancelled, or failed, it asks again.
class frmConvertDesk : public QDialog
{
    Q_OBJECT

public:
    struct Context
    {
        QString folder;
        QDate today;
        const core::TextLookup &texts;
        const language::FormTranslator &translator;
        core::Prompts &prompts;
    };
    explicit frmConvertDesk(const Context &context);
    ~frmConvertDesk() override;

    /// "Not now", Esc and the window's own button: a conversion that runs is cancelled first.
    void reject() override;

private:
    using Reading = core::Background<QList<conversion::ConvertedFile>>;
    void read();
    void endReading();
    void showFound(const QList<conversion::ConvertedFile> &found);
    void convert();
    void lookOn();
    void end();
    void tellDone(const conversion::Report &report);
    void tellFailure(const QString &key, const core::Error &error);
    void showRunning(bool running);

    Context m_context;
    std::unique_ptr<Ui::frmConvertDesk> m_ui;
    std::unique_ptr<Reading> m_reading;   ///< until its end is shown
    std::unique_ptr<ConversionRun> m_run; ///< while one runs
    qint64 m_rowsFound = 0;
    QTimer m_looks;
};

} // namespace start
