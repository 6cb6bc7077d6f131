#include "state/SharedState.h"

Ref<clsFaktura> gFaktura;
AutoRef<clsRegSettings> gReg;
AutoRef<clsAdoUtils> gDB;
Ref<ado::Connection> gConn;

QString gConnect;
qint16 gKlient = 0;
qint16 gKlientInn = 0;
qint16 gAar = 0;

QString gAppPath;
QString gHelpFile;
QString gRptPath;
QString gHelpTopic;

QString gMva0;
QString gMva10;
QString gMva15;
QString gMva25;

void releaseSharedState()
{
    gFaktura.reset();
    gDB.reset();
    gConn.reset();
    gReg.reset();

    gKlient = gKlientInn = gAar = 0;
    for (QString *text : {&gConnect, &gAppPath, &gHelpFile, &gRptPath, &gHelpTopic, &gMva0, &gMva10,
                          &gMva15, &gMva25})
        text->clear();
}
