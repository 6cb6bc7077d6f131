#include "platform/help/HelpPages.h"

#include <QEvent>
#include <QFile>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

constexpr int kMargin = 18;

} // namespace

HelpPages::HelpPages(QWidget *parent) : QTextBrowser(parent)
{
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(kMargin);
    connect(this, &QTextBrowser::sourceChanged, this, [this] { setExtraSelections({}); });
}

QVariant HelpPages::loadResource(int type, const QUrl &name)
{
    if (type == QTextDocument::ImageResource && devicePixelRatioF() > 1) {
        QString fine = u':' + source().resolved(name).path();
        fine.replace(".png"_L1, "@2x.png"_L1);
        if (QFile::exists(fine))
            return QPixmap(fine);
    }
    return QTextBrowser::loadResource(type, name);
}

void HelpPages::mark(const QStringList &words)
{
    QList<QTextEdit::ExtraSelection> marks;
    QTextCursor first;
    for (const QString &word : words) {
        for (QTextCursor found = document()->find(word); !found.isNull();
             found = document()->find(word, found)) {
            QTextCharFormat format;
            format.setBackground(palette().highlight());
            format.setForeground(palette().highlightedText());
            marks.append({found, format});
            if (first.isNull() || found < first)
                first = found;
        }
    }
    setExtraSelections(marks);
    if (first.isNull())
        return;
    first.setPosition(first.selectionStart());
    setTextCursor(first);
    // With what leads up to it.
    QScrollBar &bar = *verticalScrollBar();
    bar.setValue(bar.value() + cursorRect().top() - viewport()->height() / 3);
}

void HelpPages::changeEvent(QEvent *event)
{
    QTextBrowser::changeEvent(event);
    // The pages take their colours from the palette when they are read.
    if (event->type() == QEvent::PaletteChange && !source().isEmpty())
        reload();
}
