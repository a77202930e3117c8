#pragma once

#include "core/Prompts.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

class QMessageBox;

namespace core {

/// Message boxes of the toolkit. Texts are shown as plain text.
class QtPrompts : public Prompts
{
public:
    QtPrompts();

    void tell(const QString &text, const QString &title) override;
    bool askOkCancel(const QString &text, const QString &title) override;
    Answer askSave(const QString &text, QWidget *window) override;
    QString saveFileName(const QString &proposed, const QString &filter) override;
    bool isOpen() const override { return m_open > 0; }

private:
    class OpenPrompt;
    QWidget *windowBehind() const;
    int ask(const QString &text, const QString &title, int buttons, int defaultButton, QWidget *parent);
    void translate(QMessageBox &box) const;

    int m_open = 0;
    QPointer<QWidget> m_justBehind; ///< the window of the last prompt, until the operator's act has ended
    QTimer m_actEnds;
};

} // namespace core
