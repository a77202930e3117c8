#pragma once

#include "appearance/FormContext.h"

#include <QDialog>

#include <memory>
#include <optional>

namespace Ui {
class frmHelp;
}

namespace help {

/// Shows one help page. Deletes itself when closed.
class frmHelp : public QDialog
{
    Q_OBJECT

public:
    explicit frmHelp(const appearance::FormContext &context);
    ~frmHelp() override;

    /// Shows the page from its beginning, and says so where there is none; nothing: it could not be read.
    void setText(const std::optional<QString> &text);
    void done(int result) override;

private:
    QString m_noPage;
    std::unique_ptr<Ui::frmHelp> m_ui;
    appearance::FormSetup m_setup;
};

} // namespace help
