#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"

#include <memory>
#include <optional>

namespace Ui {
class frmHelp;
}

namespace help {

/// Shows one help page. Deletes itself when closed.
class frmHelp : public appearance::Form
{
    Q_OBJECT

public:
    explicit frmHelp(const appearance::FormContext &context);
    ~frmHelp() override;

    /// Shows the page from its beginning, and says so where there is none; nothing: it could not be read.
    void setText(const std::optional<QString> &text);

private:
    QString m_noPage;
    std::unique_ptr<Ui::frmHelp> m_ui;
};

} // namespace help
