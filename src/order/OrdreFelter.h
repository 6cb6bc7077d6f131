#pragma once

#include <QDate>
#include <QString>
#include <QStringView>

#include <array>

class QLineEdit;
class QObject;
class QWidget;

/// The numbers of the order screen's text fields.
namespace ordrefelt {
inline constexpr int kKundeNavn = 0;
inline constexpr int kFakAdresse1 = 1;
inline constexpr int kFakAdresse2 = 2;
inline constexpr int kFakPostNr = 3;
inline constexpr int kFakPostSted = 4;
inline constexpr int kLevAdresse1 = 5;
inline constexpr int kLevAdresse2 = 6;
inline constexpr int kLevPostNr = 7;
inline constexpr int kLevPostSted = 8;
inline constexpr int kBetBet = 9;
inline constexpr int kOrdreDato = 10;
inline constexpr int kLevDato = 11;
inline constexpr int kFakDato = 12;
inline constexpr int kForfallDato = 13;
inline constexpr int kEgenRef = 14;
inline constexpr int kDeresRef = 15;
inline constexpr int kOrdreNr = 16;
inline constexpr int kOrdreStatus = 17;
inline constexpr int kKundeNr = 18;
inline constexpr int kKID = 19;
inline constexpr int kSumNetto = 20;
inline constexpr int kMvaKr = 21;
inline constexpr int kSumBrutto = 22;
inline constexpr int kKontrollsiffer = 23;
inline constexpr int kOrgNr = 24;
inline constexpr int kAvrunding = 25;
inline constexpr int kFakturaType = 26;
inline constexpr int kAntall = 27;
} // namespace ordrefelt

/// The order screen's text fields `txtFields`, by number.
class OrdreFelter
{
public:
    /// Finds the fields among the screen's controls, which must outlive this object.
    explicit OrdreFelter(const QWidget &skjerm);

    /// `nr` is one of `ordrefelt`.
    [[nodiscard]] QLineEdit &operator[](int nr) const { return *m_felter.at(size_t(nr)); }
    [[nodiscard]] QString tekst(int nr) const;
    /// Shows the text from its beginning, also in a field that is locked.
    void settTekst(int nr, const QString &tekst) const;

    // Error 13 for a text that cannot be read tells in its second line which field that is, and in
    // which form it is written.

    [[nodiscard]] QDate dato(int nr) const;
    /// The day that comes as many days after `fra` as the field of the days to pay says.
    [[nodiscard]] QString forfallFra(QDate fra) const;

    /// The number of the field that is this control, or -1.
    [[nodiscard]] int nrFor(const QObject *kontroll) const;

    /// The column of Ordre that a field shows; empty for the one that no column is bound to.
    [[nodiscard]] static QStringView datafelt(int nr);

private:
    /// The caption that stands beside the field, without its colon.
    [[nodiscard]] QString ledetekst(int nr) const;

    std::array<QLineEdit *, ordrefelt::kAntall> m_felter;
};
