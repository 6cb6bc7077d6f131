#pragma once

#include <QPlainTextEdit>

/// A text field of several lines with a highest number of characters. Lines of its text are parted
/// by CR LF, which counts as two characters. Tab leaves the field.
class TextArea : public QPlainTextEdit
{
    Q_OBJECT
    Q_PROPERTY(int maxLength READ maxLength WRITE setMaxLength)

public:
    explicit TextArea(QWidget *parent = nullptr);

    /// 32767 at first. A text that is there already is not cut.
    [[nodiscard]] int maxLength() const { return m_maxLength; }
    void setMaxLength(int characters) { m_maxLength = characters; }

    [[nodiscard]] QString text() const;
    void setText(const QString &text) { setPlainText(text); }

private:
    /// One for each position of the cursor; lines are parted by LF.
    [[nodiscard]] QString characters() const;
    void cutToLength();

    int m_maxLength = 32767;
};
