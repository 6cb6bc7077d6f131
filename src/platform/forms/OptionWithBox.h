#pragma once

#include <QRadioButton>

#include <vector>

class QLineEdit;
class QTextLayout;

/// A choice whose caption leaves gaps, runs of blanks, in which text boxes stand: the option's
/// children of that kind, in their order. A box is as wide as its minimum width tells, or has room
/// for five digits. A caption that is too long for one line is wrapped, never within a gap.
///
/// Not a row of option, box and label: the option's text is told with its gap in it, and is what a
/// driver and a screen reader find; and a row does not wrap.
class OptionWithBox : public QRadioButton
{
    Q_OBJECT

public:
    explicit OptionWithBox(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    [[nodiscard]] bool hitButton(const QPoint &point) const override;

private:
    /// A box and the run of blanks in the caption in which it stands.
    struct Gap
    {
        QLineEdit *box;
        int start;
        int length;
    };

    [[nodiscard]] std::vector<Gap> gaps() const;
    [[nodiscard]] int boxWidth(const QLineEdit &box) const;
    [[nodiscard]] int boxLineHeight() const;
    [[nodiscard]] int captionLeft() const;
    /// Breaks the caption into lines for an option of that width, with gaps as wide as the boxes.
    /// Returns the height that the lines and the boxes need.
    double breakLines(QTextLayout &lines, double width) const;
};
