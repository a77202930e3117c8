#pragma once

#include <QString>

class QPlainTextEdit;

namespace appearance {

/// The text of a box of several lines, with CR LF between them. A box changes line ends and some blanks; one
/// that was only looked at gives its text back as it was set.
class MemoText
{
public:
    void show(QPlainTextEdit &box, const QString &text);
    QString text(const QPlainTextEdit &box) const;

private:
    QString m_text;
    QString m_inBox;
};

} // namespace appearance
