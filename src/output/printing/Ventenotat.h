#pragma once

#include "platform/forms/ModalDialog.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <optional>

class QProgressDialog;

/// The note that comes up above the active window when work takes longer than a moment, and by
/// which the user gives the work up: "Avbryt" or Escape. No other window takes a click or a key
/// while it stands, but it lets events run, and with them whatever the parent program does in its
/// own.
class Ventenotat
{
public:
    explicit Ventenotat(const QString &tekst);
    ~Ventenotat();
    Ventenotat(const Ventenotat &) = delete;
    Ventenotat &operator=(const Ventenotat &) = delete;

    /// To be called again and again by the work. report::errors::kCancelled when the user has given
    /// it up.
    void sjekk();

private:
    void vis();

    const QString m_tekst;
    QDateTime m_sist; ///< when the work began, then when events ran last
    std::optional<AboveActiveWindow> m_over;
    std::unique_ptr<QProgressDialog> m_notat; ///< null until it comes up
};
