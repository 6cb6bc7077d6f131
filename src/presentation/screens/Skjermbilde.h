#pragma once

#include "platform/forms/Form.h"

class fpSpread;

/// A screen of the module. What the screens do alike follows from a few traits that each of them
/// tells when it is made: its help, its place, its least size, the key that closes it.
///
/// A screen with a handler of its own calls the one here from it.
class Skjermbilde : public Form
{
    Q_OBJECT

public:
    struct Trekk
    {
        QString navn;
        FormKind slag = FormKind::Screen;
        QString hjelp; ///< the topic that F1 shows
        /// Escape closes the screen by itself; a cancel button does so without.
        bool lukkesMedEscape = false;
        /// Of a screen that keeps its place, its size for the first time; else invalid. Sizes are
        /// in twips.
        QSize standard{-1, -1};
        QSize minst{0, 0};
    };
    explicit Skjermbilde(const Trekk &trekk);

protected:
    /// Gives the screen its stored place and dresses the help picture.
    void onLoad() override;
    bool onKeyDown(Qt::Key tast, Qt::KeyboardModifiers skift) override;
    /// Stores the screen's place.
    void onUnload() override;

    /// Gives a grid's column of names the width that the other columns leave; in letters larger
    /// than common ones the names stay readable all the same.
    void tilpassNavn(fpSpread &grid, int kol) const;

private:
    const Trekk m_trekk;
};
