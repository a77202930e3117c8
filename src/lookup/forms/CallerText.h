#pragma once

#include <QPlainTextEdit>

namespace lookup {

/// A text about the caller in given colours, only to be read. Where the letters could not be read on their
/// ground, a plate stands behind them.
class CallerText : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit CallerText(QWidget *parent = nullptr);

    void setColors(const QColor &ground, const QColor &text);
    /// Makes the box as high as its text is at that width, but not higher than so many lines.
    void fitHeight(int width, int mostLines);
    /// The colour behind the letters.
    QColor behindLetters() const;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace lookup
