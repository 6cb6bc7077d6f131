#pragma once

#include <QString>

#include <functional>

/// Reads a setting of the module: its key and the default for one that is absent give the stored
/// text. Rules read their settings afresh at each use and take the text's leading number, so the
/// closing zero character of the store does no harm.
using Innstilling = std::function<QString(const QString &nokkel, const QString &standard)>;

/// The module's own section "Regningsdel" of the settings store gReg, as an Innstilling.
[[nodiscard]] QString LesInnstilling(const QString &nokkel, const QString &standard);
