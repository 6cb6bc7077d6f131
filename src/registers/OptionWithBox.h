#pragma once

#include <QRadioButton>

class QLineEdit;
class QTextLayout;

/// A choice whose caption leaves a gap, a run of blanks, in which a text box stands. The box is the
/// option's one child of its kind. A caption that is too long for one line is wrapped.
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
    [[nodiscard]] QLineEdit *box() const;
    [[nodiscard]] int boxWidth() const;
    [[nodiscard]] int firstLineHeight() const;
    [[nodiscard]] int captionLeft() const;
    /// Breaks the caption into lines for an option of that width, with a gap as wide as the box.
    /// Returns the height that the lines and the box need.
    double breakLines(QTextLayout &lines, double width) const;
};
