#pragma once

#include "platform/forms/Form.h"

#include <memory>

class QTimer;
namespace Ui {
class frmTMsgBox;
}

/// A note that closes by itself about two seconds after it became active. VisMelding is the way in.
class frmTMsgBox : public Form
{
    Q_OBJECT

public:
    frmTMsgBox();
    ~frmTMsgBox() override;

    [[nodiscard]] qint32 IconID() const { return m_iconID; }
    /// Chooses the picture, which the note takes when it becomes active, or at once when it is up:
    /// -3 sad, -2 smile, -1 check, 16 stop, 32 question, 48 exclamation, anything else info. 0
    /// leaves an earlier choice as it is.
    void setIconID(qint32 ikon);
    /// The note's text; nothing in it is markup.
    void settTekst(const QString &tekst);
    void skjulKnapp();

protected:
    void onLoad() override;
    void onActivate() override;
    void onResize() override;
    void onUnload() override;

private:
    void gjorPlassTilTekst();
    void visBilde();
    void tikk();
    void Command1_Click();

    std::unique_ptr<Ui::frmTMsgBox> m_ui;
    QTimer *m_timer1;
    qint32 m_iconID = 0;
    qint16 m_tikk = 0; ///< since the note became active
};
