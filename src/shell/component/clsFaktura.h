#pragma once

#include "state/SharedState.h"

#include <QObject>
#include <QString>

/// The public class of the component, external name "Faktura.clsFaktura". The parent makes an
/// instance, sets the three values in any order, calls StartModul and reads ModuleInit. The values
/// are shared by all instances; ModuleInit is each instance's own. Properties and invokables are
/// reached by name, so a parent needs none of these headers. One thread, that of the parent's user
/// interface.
class clsFaktura : public QObject
{
    Q_OBJECT
    /// 1 when the module stands ready, 0 when its start failed.
    Q_PROPERTY(qint16 ModuleInit READ ModuleInit WRITE setModuleInit)
    /// Takes effect with the next StartModul.
    Q_PROPERTY(QString ConnectStreng READ ConnectStreng WRITE setConnectStreng)
    /// Takes effect at once for every later statement.
    Q_PROPERTY(qint16 Klient READ Klient WRITE setKlient)
    Q_PROPERTY(qint16 CurrentYear READ CurrentYear WRITE setCurrentYear)

public:
    clsFaktura();

    [[nodiscard]] qint16 ModuleInit() const { return m_moduleInit; }
    void setModuleInit(qint16 vData) { m_moduleInit = vData; }
    [[nodiscard]] QString ConnectStreng() const { return gConnect; }
    void setConnectStreng(const QString &sData) { gConnect = sData; }
    [[nodiscard]] qint16 Klient() const { return gKlientInn; }
    void setKlient(qint16 vData);
    [[nodiscard]] qint16 CurrentYear() const { return gAar; }
    void setCurrentYear(qint16 vData) { gAar = vData; }

    /// Opens the database, brings it up to the module's own level and shows the main menu, which
    /// stays open when this returns. In a parent without a QApplication nothing is shown. Raises
    /// nothing; ModuleInit tells the outcome.
    Q_INVOKABLE void StartModul();

private:
    void Class_Initialize();
    static void OpenConnection();

    // Each is true on success and leaves what is there already alone.
    static bool LagTabellOrdre();
    static bool LagTabellProdukt();
    static bool LagTabellOrdreLinjer();
    /// Adds the columns of later versions and the sales account. True by its last step alone: the
    /// opening balance when the account was missing, else the last column.
    static bool OppgraderTabeller();

    qint16 m_moduleInit = 0;
};
