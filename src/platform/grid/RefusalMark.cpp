#include "platform/grid/RefusalMark.h"

#include "platform/grid/CellType.h"

#include <QAbstractItemView>
#include <QFrame>
#include <QTimer>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr int kMoment = 4000; // milliseconds
constexpr qsizetype kMostShown = 40;

QString reason(const CellType &type)
{
    switch (type.kind) {
    case CellKind::Float:
    case CellKind::Integer:
        return u"er ikke et tall"_s;
    case CellKind::Date:
        return u"er ikke en dato som kan stå her"_s;
    case CellKind::Time:
        return u"er ikke et klokkeslett"_s;
    case CellKind::ComboBox:
        return u"finnes ikke i listen"_s;
    case CellKind::CheckBox:
    case CellKind::Edit:
        break;
    }
    return u"kan ikke stå her"_s;
}

QString shortened(const QString &text)
{
    return text.size() > kMostShown ? text.first(kMostShown) + u'…' : text;
}

} // namespace

void markCell(QAbstractItemView &view, const QModelIndex &cell, const QString &told)
{
    const QString name = u"avvist"_s;
    delete view.viewport()->findChild<QFrame *>(name);
    // A child of the viewport, so that it goes along when the cells are scrolled.
    auto *mark = new QFrame(view.viewport());
    mark->setObjectName(name);
    mark->setAttribute(Qt::WA_TransparentForMouseEvents);
    mark->setStyleSheet(u"border: 2px solid #d00000"_s); // seen on a light and on a dark ground
    mark->setGeometry(view.visualRect(cell));
    mark->show();

    // A tool tip goes with the next change of focus, and the key that has left the cell is still
    // about to cause one.
    QTimer::singleShot(0, mark, [mark, told] {
        QToolTip::showText(mark->mapToGlobal(mark->rect().bottomLeft()), told, mark->parentWidget(),
                           {}, kMoment);
    });
    auto *moment = new QTimer(mark);
    QObject::connect(moment, &QTimer::timeout, mark, &QObject::deleteLater);
    moment->start(kMoment);
}

void markRefusal(QAbstractItemView &view, const QModelIndex &cell, const QString &typed,
                 const CellType &type)
{
    markCell(view, cell, u"«%1» %2. Cellen er som før."_s.arg(shortened(typed), reason(type)));
}
