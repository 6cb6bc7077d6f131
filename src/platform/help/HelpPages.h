#pragma once

#include <QTextBrowser>

/// The page that is read. Its pictures come in the resolution of the screen: "x@2x.png" where
/// "x.png" would be coarse.
class HelpPages : public QTextBrowser
{
public:
    explicit HelpPages(QWidget *parent);

    QVariant loadResource(int type, const QUrl &name) override;

    /// Marks the words wherever they stand on the page, whole or as a part of a word, and shows the
    /// first place. The marks go with the page.
    void mark(const QStringList &words);

protected:
    void changeEvent(QEvent *event) override;
};
