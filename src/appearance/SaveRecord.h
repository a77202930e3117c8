#pragma once

#include "appearance/Form.h"
#include "appearance/FormContext.h"
#include "core/RecordSave.h"

#include <functional>

namespace appearance {

/// What was typed into a form and stands on no file yet.
struct Unsaved
{
    QString name;               ///< of the record; may be empty
    QString question;           ///< its key
    std::function<bool()> save; ///< false where it could not be saved
};

/// Asks what becomes of it, in front of the form. False where the operator is to go on with it: he wants to,
/// or it could not be saved.
bool settleUnsaved(const FormContext &context, Form &form, const Unsaved &unsaved);

/// The window that a record is edited in, as far as its questions need it.
struct RecordEditor
{
    QWidget &form;
    QString name; ///< of the record
    std::function<QString(const QString &column)> captionOf;
    std::function<bool(const QString &column)> isMark;
};

/// A form with a control for each column.
RecordEditor recordEditor(QWidget &form, const QString &name,
                          const std::function<const QWidget *(const QString &column)> &controlOf);

/// Asks whose values hold where somebody else has changed or deleted the record: Save for the operator's own,
/// Discard for those on file.
core::Prompts::Answer askWhose(const FormContext &context, const RecordEditor &editor,
                               const core::Saved &refused);

/// Saves, and again as the operator decides while somebody else's changes are in the way. What there is to
/// tell him is told. `save` gives a core::Saved, `decide` takes one with what was decided.
template <typename Save, typename Decide>
auto saveRecord(const FormContext &context, const RecordEditor &editor, Save save, Decide decide)
{
    auto saved = save();
    while (saved.gone || !saved.disputed.isEmpty()) {
        const core::Prompts::Answer answer = askWhose(context, editor, saved);
        saved.dropped = saved.gone && answer == core::Prompts::Answer::Discard;
        if (saved.dropped || answer == core::Prompts::Answer::Cancel) {
            return saved;
        }
        decide(saved, answer == core::Prompts::Answer::Save ? core::Whose::Mine : core::Whose::Theirs);
        saved = save();
    }
    if (!saved.message.isEmpty()) {
        context.prompts.tell(saved.message, saved.title, &editor.form);
    }
    return saved;
}

} // namespace appearance
