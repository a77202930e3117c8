#pragma once

#include "appearance/FormContext.h"

#include <QDialog>

#include <memory>

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

    /// Shows the page from its beginning.
    void setText(const QString &text);
    void done(int result) override;

private:
    std::unique_ptr<Ui::frmHelp> m_ui;
    appearance::FormSetup m_setup;
};

} // namespace help
