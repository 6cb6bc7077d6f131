#include "output/printing/Ventenotat.h"

#include "platform/forms/MsgBox.h"
#include "platform/report/ReportError.h"
#include "runtime/Clock.h"

#include <QCoreApplication>
#include <QProgressDialog>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

// Milliseconds.
constexpr qint64 kEtOyeblikk = 400; // a window that does nothing for longer seems dead
constexpr qint64 kMellomHendelser = 100;

} // namespace

Ventenotat::Ventenotat(const QString &tekst) : m_tekst(tekst), m_sist(Clock::current().now()) {}

Ventenotat::~Ventenotat() = default;

void Ventenotat::sjekk()
{
    const QDateTime naa = Clock::current().now();
    if (qAbs(m_sist.msecsTo(naa)) < (m_notat ? kMellomHendelser : kEtOyeblikk))
        return;
    m_sist = naa;
    if (!m_notat)
        vis();
    QCoreApplication::processEvents();
    if (m_notat->wasCanceled())
        report::raise(report::errors::kCancelled, u"Avbrutt."_s);
}

void Ventenotat::vis()
{
    // How far the work has come is not known.
    m_notat = std::make_unique<QProgressDialog>(m_tekst, u"Avbryt"_s, 0, 0);
    m_notat->setObjectName(u"Ventenotat"_s);
    m_notat->setWindowTitle(applicationTitle());
    m_notat->setWindowModality(Qt::ApplicationModal);
    // Enter, which may have been meant for the screen below, presses nothing.
    m_notat->findChild<QPushButton *>()->setAutoDefault(false);
    m_over.emplace(*m_notat);
    m_notat->show();
}
