#pragma once

#include "core/Prompts.h"

class QMessageBox;

namespace core {

/// Message boxes of the toolkit. Texts are shown as plain text.
class QtPrompts : public Prompts
{
public:
    void tell(const QString &text) override;
    bool askOkCancel(const QString &text, const QString &title) override;
    bool isOpen() const override { return m_open > 0; }

private:
    bool ask(const QString &text, const QString &title, bool question);
    void translate(QMessageBox &box) const;

    int m_open = 0;
};

} // namespace core
