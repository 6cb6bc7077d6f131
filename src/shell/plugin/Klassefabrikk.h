#pragma once

#include <QObject>

/// The root object of the component's library, and the way to its instances. It lives as long as
/// the library is loaded: its making runs Main, and its end takes the shared state with it.
class Klassefabrikk : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Faktura.clsFaktura" FILE "Klassefabrikk.json")

public:
    Klassefabrikk();
    ~Klassefabrikk() override;

    /// A new instance of clsFaktura. The caller owns it and destroys it before the library is
    /// unloaded.
    Q_INVOKABLE QObject *CreateInstance();
    /// Likewise of the class of that external name, "Faktura.clsFaktura" or "Faktura.clsEhf3";
    /// nothing for any other name.
    Q_INVOKABLE QObject *CreateInstance(const QString &klasse);
};
