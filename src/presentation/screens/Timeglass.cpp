#include "presentation/screens/Timeglass.h"

#include "runtime/Clock.h"

#include <QApplication>
#include <QBackingStore>
#include <QWidget>

#include <utility>

namespace {

constexpr int kSeSjelden = 64;     // calls between two looks at the clock, which has its price
constexpr qint64 kMellomrom = 200; // milliseconds

} // namespace

Timeglass::Timeglass()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void Timeglass::fjern()
{
    if (std::exchange(m_staar, false))
        QApplication::restoreOverrideCursor();
}

void Timeglass::holdVinduene()
{
    if (++m_kall % kSeSjelden != 0)
        return;
    const QDateTime naa = Clock::current().now();
    if (m_vist.isValid() && qAbs(m_vist.msecsTo(naa)) < kMellomrom)
        return;
    m_vist = naa;
    for (const QWidget *vindu : QApplication::topLevelWidgets()) {
        if (QBackingStore *malt = vindu->isVisible() ? vindu->backingStore() : nullptr)
            malt->flush(vindu->rect());
    }
}
