#include "rules/Innstilling.h"

#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"

QString LesInnstilling(const QString &nokkel, const QString &standard)
{
    return gReg->GetSetting(QStringLiteral("Regningsdel"), nokkel, standard);
}
