#include "appearance/SaveRecord.h"

#include "core/TextUtilities.h"

#include <QCheckBox>
#include <QLabel>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace appearance {

namespace {

// What a control is called in its form, without the sign before its key.
QString captionOf(const QWidget &form, const QWidget *control)
{
    QString caption;
    if (const auto *const box = qobject_cast<const QCheckBox *>(control)) {
        caption = box->text();
    } else {
        const QList<QLabel *> labels = form.findChildren<QLabel *>();
        const auto label = std::ranges::find(labels, control, &QLabel::buddy);
        caption = label != labels.end() ? (*label)->text() : QString();
    }
    static const QRegularExpression keySign(u"\\(&.\\)|&(?=.)"_s);
    return caption.remove(keySign).trimmed();
}

// Marks are stored as letters or digits.
QString wordOf(const core::TextLookup &texts, const QVariant &mark)
{
    const QString stored = mark.toString();
    if (core::MyIn(stored, u"Y"_s, u"1"_s)) {
        return texts.Lms(u"Yes"_s);
    }
    return texts.Lms(core::MyIn(stored, u"G"_s, u"2"_s) ? u"MarkUndecided"_s : u"No"_s);
}

} // namespace

bool settleUnsaved(const FormContext &context, Form &form, const Unsaved &unsaved)
{
    using Answer = core::Prompts::Answer;
    form.bringToFront();
    const QString question = core::questionAbout(unsaved.name, context.texts.Lms(unsaved.question));
    const Answer answer = context.prompts.askSave(question, &form);
    return answer == Answer::Discard || (answer == Answer::Save && unsaved.save());
}

RecordEditor recordEditor(QWidget &form, const QString &name,
                          const std::function<const QWidget *(const QString &column)> &controlOf)
{
    return {form, name,
            [&form, controlOf](const QString &column) { return captionOf(form, controlOf(column)); },
            [controlOf](const QString &column) {
                return qobject_cast<const QCheckBox *>(controlOf(column)) != nullptr;
            }};
}

core::Prompts::Answer askWhose(const FormContext &context, const RecordEditor &editor,
                               const core::Saved &refused)
{
    const core::TextLookup &texts = context.texts;
    QStringList lines{texts.Lms(refused.gone ? u"RecordGone"_s : u"ChangedElsewhere"_s)};
    for (const core::FieldEdit &edit : refused.disputed) {
        const auto shown = [&](const QVariant &value) {
            const QString text = core::shownText(value.toString());
            return editor.isMark(edit.column) ? wordOf(texts, value)
                   : text.trimmed().isEmpty() ? texts.Lms(u"FieldEmpty"_s)
                                              : core::isolated(text);
        };
        lines.append({QString(), editor.captionOf(edit.column),
                      texts.Lms(u"ValueMine"_s) + u' ' + shown(edit.wanted),
                      texts.Lms(u"ValueTheirs"_s) + u' ' + shown(edit.onFile)});
    }
    return context.prompts.askSave(core::questionAbout(editor.name, lines.join(u'\n')), &editor.form,
                                   {u"KeepMine"_s, u"KeepTheirs"_s, u"BackToEditor"_s});
}

} // namespace appearance
