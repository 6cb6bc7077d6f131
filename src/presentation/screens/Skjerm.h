#pragma once

#include <QSize>
#include <QString>

class Form;
class QComboBox;
class QLabel;
class QWidget;

// What the screens share. All of these pass over.

/// Stores the form's place and size; a minimised form keeps those of the last time.
void LagreSkjermPlass(const Form &form);
/// Gives the form its stored place and size, or the defaults for what is not stored. All are in
/// twips. The values are not held against the screen. A default size is for letters of the common
/// size and grows with larger ones, as far as the screen goes.
void HentSkjermPlass(Form &form, qint32 standardTopp, qint32 standardVenstre, qint32 standardBredde,
                     qint32 standardHoyde);

/// Stores the folder that was used last for a kind of file, and gives it back: empty when there is
/// none.
void LagreMappe(const QString &filslag, const QString &mappe);
[[nodiscard]] QString HentMappe(const QString &filslag);

/// A size that was drawn for letters of the common size, in the letters of that widget: never less.
[[nodiscard]] QSize MedBokstavene(const QWidget &kontroll, QSize tegnet);
/// Whether the letters of that widget are larger than the common ones.
[[nodiscard]] bool HarStoreBokstaver(const QWidget &kontroll);
/// The pixels that a control of a drawn width needs for `tekst`, and `ved` it for frame and
/// margins: its least width as drawn, or more in larger letters.
[[nodiscard]] int BreddeFor(const QWidget &kontroll, QStringView tekst, int ved);
/// Gives the push buttons of a screen their least size, in pixels.
void LikeKnapper(const QWidget &skjerm, QSize minst);
/// Gives the strip above a form's grid its fixed height or, for letters larger than common ones,
/// what the text needs if that is more, up to a third of the form.
void TilpassOverskrift(const Form &form, QWidget &stripe, const QLabel &tekst);

/// Dresses the form's image control `imgF1` as the help picture, a click on which presses F1. A
/// form without one stays as it is.
void VisHjelpBilde(Form &form);
/// Shows the page `emne` of the help file, such as "html\ordre.htm".
void VisHjelp(const QString &emne);

/// Whether a form of that name is loaded; upper and lower case differ.
[[nodiscard]] bool ErFormLastet(const QString &navn);

/// Gives the list's drop-down part a width in pixels; the closed box keeps its own. With a width of
/// 0 or less it is what the entry with the most characters needs, and `bredde` is set to it.
void SettListeBredde(QComboBox &liste, qint32 &bredde);
