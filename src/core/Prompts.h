#pragma once

#include "core/TextLookup.h"

#include <QString>

#include <functional>
#include <utility>

class QWidget;

namespace core {

/// The door to message boxes and file dialogs: everything that waits for the operator's answer.
class Prompts
{
public:
    virtual ~Prompts() = default;
    /// A message with an OK button, in front of `window`, or of the one that the operator works in. Here and
    /// below an empty title stands for the window's own.
    virtual void tell(const QString &text, const QString &title = {}, QWidget *window = nullptr) = 0;
    /// A question with OK and Cancel.
    virtual bool askOkCancel(const QString &text, const QString &title = {}) = 0;
    enum class Answer { Save, Discard, Cancel };
    /// The text keys of the buttons for the three answers.
    struct SaveWords
    {
        QString save = QStringLiteral("Save");
        QString discard = QStringLiteral("DontSave");
        QString cancel = QStringLiteral("Cancel");
    };
    /// Asks what becomes of typed text that was not saved, in front of `window`, the one that holds it.
    virtual Answer askSave(const QString &text, QWidget *window, const SaveWords &words) = 0;
    Answer askSave(const QString &text, QWidget *window) { return askSave(text, window, {}); }
    /// The file to write, which the operator agreed to replace where it exists; empty when cancelled.
    /// `proposed` is a file name or a path, `filter` as in "(*.txt)|*.txt|(*.*)|*.*".
    virtual QString saveFileName(const QString &proposed, const QString &filter) = 0;
    /// A file to read; empty when cancelled. `filter` as above, several patterns of one kind parted by blanks.
    virtual QString openFileName(const QString &filter) = 0;
    /// True while one of the above waits for an answer; calls that arrive meanwhile are held back.
    virtual bool isOpen() const = 0;

    /// Called each time the last open prompt has closed.
    void setClosedHandler(std::function<void()> handler) { m_closed = std::move(handler); }

    /// Where the words of the buttons come from; null for Qt's own. The texts must outlive their use here.
    void setTexts(const TextLookup *texts) { m_texts = texts; }

protected:
    const TextLookup *texts() const { return m_texts; }
    void notifyClosed() const
    {
        if (!isOpen() && m_closed) {
            m_closed();
        }
    }

private:
    std::function<void()> m_closed;
    const TextLookup *m_texts = nullptr;
};

} // namespace core
