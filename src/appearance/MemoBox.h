#pragma once

#include <QPlainTextEdit>

namespace appearance {

/// A box of several lines. Its text has CR LF between them; one that was only looked at is given back as it
/// was set, whatever line ends it has.
///
/// The toolkit lays a line out as a whole at each key, which takes seconds for one of 200,000 characters. So
/// the box parts a line that is longer than some limit into blocks. The separator between two of them is
/// marked as a soft break by its format, which stays with it when it is deleted, undone or redone. No text
/// that is read, copied or saved has soft breaks, and keys step over them.
class MemoBox : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr int longestBlock = 2000;

    explicit MemoBox(QWidget *parent = nullptr, int longest = longestBlock);

    /// What stood before does not come back by undoing.
    void setText(const QString &text);
    QString text() const;

protected:
    /// Quick for a text of any length. Line separators stay within a block, so that many short lines may
    /// share one.
    void insert(QTextCursor cursor, const QString &text);

    void keyPressEvent(QKeyEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    QMimeData *createMimeDataFromSelection() const override;

private:
    QString typedText() const;
    QString lines(int from, int to) const;
    void breakChangedLines();
    void breakLines(int from, int to);
    void stepOverBreak(bool back);
    void undoOrRedo(bool back);
    bool hasOnlyCrossedBreak(int from) const;

    const int m_longest; ///< characters of a block
    QString m_text;      ///< as it was set
    QString m_shown;     ///< what was read back then
    int m_changedFrom = 0;
    int m_changedTo = 0;
    bool m_isBreaking = false;
};

} // namespace appearance
