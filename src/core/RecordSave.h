#pragma once

#include <QList>
#include <QString>
#include <QVariant>

namespace core {

/// One field of a record that an editor saves. Every value is in the form in which its column is written, so
/// that Null and an empty text, say, are no difference.
struct FieldEdit
{
    QString column;
    QVariant read;   ///< in the row when the editor was filled from it
    QVariant shown;  ///< what the editor then showed: another field's value in one of its boxes
    QVariant wanted; ///< what stands in the editor now
    QVariant onFile; ///< in the row as it is now

    bool isTyped() const { return wanted != shown; }
    bool isChangedElsewhere() const { return onFile != read && onFile != shown; }
    /// The operator has changed the field, and somebody else has changed it to something different.
    bool isDisputed() const { return isTyped() && isChangedElsewhere() && wanted != onFile; }
    /// Somebody else has changed what the operator left alone: it stays as it is on file.
    bool isTakenOver() const { return !isTyped() && isChangedElsewhere(); }
};

inline QList<FieldEdit> disputed(QList<FieldEdit> edits)
{
    edits.removeIf([](const FieldEdit &edit) { return !edit.isDisputed(); });
    return edits;
}

/// What a save of one record came to. Nothing was written where `written` is false.
struct Saved
{
    bool written = false;
    bool gone = false;         ///< the row has been deleted since it was read
    bool dropped = false;      ///< and the operator wants it to stay so
    QList<FieldEdit> disputed; ///< the operator is to say whose values hold
    QString wrongField;        ///< the column that has to be filled in anew
    QString message;           ///< for the operator; empty where there is nothing to tell
    QString title;             ///< of the message; empty for the editor's own
};

/// Whose values hold where two have changed the same: the operator's own, or those on file.
enum class Whose { Mine, Theirs };

} // namespace core
