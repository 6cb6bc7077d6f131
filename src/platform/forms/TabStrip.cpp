#include "platform/forms/TabStrip.h"

#include "runtime/RunTimeError.h"

#include <QScopedValueRollback>
#include <QStyleOptionTabWidgetFrame>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace {

constexpr int kIndexOutOfBounds = 35600;

} // namespace

TabStrip::TabStrip(QWidget *parent) : QTabWidget(parent)
{
    connect(this, &QTabWidget::currentChanged, this, [this](int index) {
        if (!m_byCode && index >= 0)
            Q_EMIT clicked();
    });
    // A press on the selected tab changes nothing and is a click all the same.
    connect(tabBar(), &QTabBar::tabBarClicked, this, [this](int index) {
        if (index >= 0 && index == currentIndex())
            Q_EMIT clicked();
    });
}

void TabStrip::select(int number)
{
    if (number < 1 || number > count())
        throw RunTimeError(kIndexOutOfBounds, u"Indeksen er utenfor samlingen"_s);
    const QScopedValueRollback byCode(m_byCode, true);
    setCurrentIndex(number - 1);
}

void TabStrip::clickNext()
{
    if (count() > 1)
        setCurrentIndex((currentIndex() + 1) % count());
}

QRect TabStrip::clientArea() const
{
    // Not the page's own place, which follows only when the strip is seen.
    QStyleOptionTabWidgetFrame option;
    initStyleOption(&option);
    return style()
        ->subElementRect(QStyle::SE_TabWidgetTabContents, &option, this)
        .translated(pos());
}
