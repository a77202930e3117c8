#pragma once

#include "core/Prompts.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

class QMessageBox;

namespace core {

/// Qt's message boxes and file dialogs. Texts are shown as plain text.
class QtPrompts : public Prompts
{
public:
    using Prompts::askSave;

    QtPrompts();

    void tell(const QString &text, const QString &title, QWidget *window) override;
    bool askOkCancel(const QString &text, const QString &title) override;
    Answer askSave(const QString &text, QWidget *window, const SaveWords &words) override;
    QString saveFileName(const QString &proposed, const QString &filter) override;
    QString openFileName(const QString &filter) override;
    bool isOpen() const override { return m_open > 0; }

private:
    class OpenPrompt;
    /// What a box says, and where it stands.
    struct Box
    {
        QString text;
        QString title;
        QWidget *parent = nullptr;
        SaveWords words = {};
    };
    QWidget *windowBehind() const;
    QWidget *inFrontOf(QWidget *window) const;
    int ask(const Box &asked, int buttons, int defaultButton);
    void translate(QMessageBox &box, const SaveWords &words) const;

    int m_open = 0;
    QPointer<QWidget> m_justBehind; ///< the window of the last prompt, until the operator's act has ended
    QTimer m_actEnds;
};

} // namespace core
