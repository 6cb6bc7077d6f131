#pragma once

#include "order/OrdreSkjerm.h"
#include "output/printing/Forhandsvisning.h"
#include "output/printing/Sidevisning.h"
#include "output/printing/Skriver.h"
#include "output/printing/mUtskrift.h"
#include "platform/forms/CommonDialog.h"
#include "platform/report/CrystalReport.h"

#include <QFileDialog>
#include <QPrinter>
#include <QProgressDialog>

/// Printers that print to PDF files in a folder, "1.pdf", "2.pdf" and so on, one for each printout.
class Proveskrivere : public Skrivere
{
public:
    explicit Proveskrivere(const QString &mappe) : m_mappe(mappe) {}

    [[nodiscard]] QString standard() const override { return standardnavn; }
    /// "Etikett" and "Liggende" are set to other papers; "Nekter" takes nothing, and any other name
    /// than "Kontor" names no printer.
    [[nodiscard]] std::unique_ptr<QPrinter> lag(const QString &navn) const override;

    QString standardnavn;
    mutable QStringList brukt;

private:
    const QString m_mappe;
};

/// A clock in force while it lives, by which each look at it comes a second or so after the one
/// before: whatever looks at the time takes long.
class LangsomTid : public Clock
{
public:
    explicit LangsomTid(int millisekunder = 1000) : m_skritt(millisekunder), m_scope(*this) {}
    [[nodiscard]] QDateTime now() const override { return m_now = m_now.addMSecs(m_skritt); }

private:
    const int m_skritt;
    mutable QDateTime m_now{QDate(2014, 3, 9), QTime(12, 0)};
    ScopedClock m_scope;
};

/// The module with report files of the tests' own, printers of their own, and the order screen.
class UtskriftTest : public OrdreSkjerm
{
protected:
    UtskriftTest();
    void TearDown() override;

    /// The preview windows in the order in which they were opened.
    static QList<Forhandsvisning *> vinduer();
    /// The one that was opened last.
    static Forhandsvisning *vindu();
    static Sidevisning *sider(const Forhandsvisning *vindu);
    static const report::Document &dokument(const Forhandsvisning *vindu);
    /// The texts of all pages.
    static QStringList tekster(const Forhandsvisning *vindu);
    /// The report control as the last run has left it; null when its form is not loaded.
    static CrystalReport *kontroll();
    static QStringList lasteSkjermer();

    /// The printouts of the tests' printers so far.
    [[nodiscard]] QList<QByteArray> utskrifter() const;
    [[nodiscard]] QString fil(const QString &navn) const { return folder() + u'/' + navn; }
    [[nodiscard]] QByteArray innhold(const QString &navn) const;

    void leggOrdrer(int antall);
    /// A preview of "Liste.rpt" with so many orders, six to the page.
    Forhandsvisning *visListe(int ordrer);

    Proveskrivere skrivere;
    BrukSkrivere brukSkrivere;
};

/// The size of a PDF file's paper, in points; and its number of pages.
[[nodiscard]] QSize papir(const QByteArray &pdf);
[[nodiscard]] qsizetype antallSider(const QByteArray &pdf);

/// Types a name into a file dialog and presses its button.
void svarMedFil(QFileDialog &dialog, const QString &navn);
/// Chooses in the printer dialog and presses "Skriv ut"; an empty `skriver` leaves the suggestion.
void svarMedSkriver(QDialog &dialog, const QString &skriver, int eksemplarer = 1);
