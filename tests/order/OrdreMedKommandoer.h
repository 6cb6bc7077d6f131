#pragma once

#include "order/OrdreSkjerm.h"
#include "platform/forms/Forms.h"
#include "platform/grid/fpSpread.h"

#include <QCheckBox>

using namespace Qt::StringLiterals;

/// The order screen with what its commands are told from; what it hands to the print dialog is
/// kept.
class OrdreMedKommandoer : public OrdreSkjerm
{
protected:
    OrdreMedKommandoer()
    {
        frmOrdre::settUtskriftApner([this](const OrdreUtskrift &u) { utskrifter.push_back(u); });
    }
    static fpSpread *grid() { return control<fpSpread>(u"vaSpread1"_s); }
    static QCheckBox *betalt() { return control<QCheckBox>(u"chkBetalt"_s); }
    static QString verktoytips(const QString &name) { return control(name)->toolTip(); }
    QString status(int id)
    {
        return rows(u"SELECT OrdreStatus FROM Ordre WHERE ID=%1"_s.arg(id)).value(0);
    }

    /// The buttons that are on while browsing and while entering.
    const QStringList kBrowse{u"btnPrint"_s, u"btnCopy"_s, u"btnNew"_s, u"btnChange"_s};
    const QStringList kEditing{u"btnSave"_s, u"btnCancel"_s};
    std::vector<OrdreUtskrift> utskrifter;
};
