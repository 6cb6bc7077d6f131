#pragma once

#include "order/OrdreTilstand.h"
#include "registers/customers/KundeMottaker.h"

#include <QObject>

class DTPicker;
class QKeyEvent;

/// The header of the order screen: what its fields do when they get and lose the focus, and the
/// date pickers beside them. Outside the modes New and Change the fields are kept read-only: they
/// send the focus on and take no text. A picked customer is written into the fields in any mode,
/// without passing through their focus.
class OrdreHode : public QObject, public KundeMottaker, private OrdreRom
{
    Q_OBJECT

public:
    /// Connects to the controls' events.
    explicit OrdreHode(const OrdreRom &rom);

    /// Limits the date pickers to the accounting year and the one after it. Passes over.
    void settGrenser();
    /// Empties fields and check boxes.
    void tomFelter();

    /// Whether the order date is outside the accounting year. Error 13 when it is no date.
    [[nodiscard]] bool erUtenforAar() const;

    void settKundefelt(KundeFelt felt, const QString &tekst) override;
    void settSammeLevAdr(qint32 verdi) override;
    [[nodiscard]] QString betBet() const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Whether a field sends the focus on: some always, most of them outside a mode, dates never.
    [[nodiscard]] bool senderVidere(int nr) const;
    void laasFelter();
    bool apnerKalender(int nr, const QKeyEvent &tast);
    void fikkFokus(int nr, Qt::FocusReason grunn);
    void forlatFelt(int nr);
    void mistetFokus(int nr);
    void settForfall();
    void kobleVelger(DTPicker &velger, int nr);
    void visDato(DTPicker &velger, int nr);
};
